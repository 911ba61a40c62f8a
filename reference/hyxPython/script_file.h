// Functions of script files, run in the interpreter of this process.
#pragma once

#include "reference/hyxPython/interpreter.h"

#include <string>
#include <vector>

namespace hyxPython {

/// A script's objects for its function: the native object and its class.
struct ScriptArgument {
    void* object;
    char const* type;
};

/// A script file that has been read and run once, so that its functions can be called.
///
/// Where an operation fails it returns a false value and leaves the error, with the script's own traceback, pending in
/// the interpreter.
class ScriptFile {
public:
    /// Reads and runs the file, unless it was before and has not changed since; with `again` in any case. Throws
    /// std::runtime_error when no interpreter runs this thread.
    static ScriptFile load(std::string const& path, bool again = false);

    explicit operator bool() const { return static_cast<bool>(m_namespace); }

    /// Whether the script has a function called `name`.
    bool hasFunction(std::string const& name) const;

    /// Calls a function with as many of the arguments as it takes.
    ScriptObject call(std::string const& name, std::vector<ScriptArgument> const& arguments) const;

    /// Calls a function with objects of the interpreter.
    ScriptObject callWith(std::string const& name, PyObject* argumentTuple) const;

private:
    ScriptObject find(std::string const& name) const;

    std::string m_path;
    ScriptObject m_namespace;
};

} // namespace hyxPython
