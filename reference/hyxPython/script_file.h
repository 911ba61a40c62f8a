/// Functions of script files, run in the interpreter of this process.
#pragma once

#include "reference/hyxPython/interpreter.h"

#include <string>
#include <vector>

namespace hyxPython {

/// A script's objects for its function: the native object and its class.
struct ScriptArgument {
  void* object;
  const char* type;
};

/// A script file that has been read and run once, so that its functions can be called.
///
/// Where an operation fails it returns a false value and leaves the error, with the script's own traceback, pending in the
/// interpreter.
class ScriptFile {
public:
  /// Reads and runs the file, unless it was before and has not changed since; with `again` in any case. Throws
  /// std::runtime_error when no interpreter runs this thread.
  static ScriptFile load(const std::string& path, bool again = false);

  explicit operator bool() const { return static_cast<bool>(m_namespace); }

  /// Whether the script has a function called `name`.
  bool hasFunction(const std::string& name) const;

  /// Calls a function with as many of the arguments as it takes.
  ScriptObject call(const std::string& name, const std::vector<ScriptArgument>& arguments) const;

  /// Calls a function with objects of the interpreter.
  ScriptObject callWith(const std::string& name, PyObject* argumentTuple) const;

private:
  ScriptObject find(const std::string& name) const;

  std::string m_path;
  ScriptObject m_namespace;
};

}  // namespace hyxPython
