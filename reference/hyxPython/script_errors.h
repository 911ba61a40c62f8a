// Errors that scripts leave where native code called them.
#pragma once

#include "reference/hyxPython/interpreter.h"

#include <string>

namespace hyxPython {

/// Hands the pending error to the script manager, which prints it, and gives its text; "" where there is none, or one
/// that is to end the program, which stays.
std::string takeScriptError(char const* where);

/// Keeps the first error that the script manager takes during its life.
class FirstError {
public:
    FirstError();
    ~FirstError();
    FirstError(FirstError const&) = delete;
    FirstError& operator=(FirstError const&) = delete;

    /// Raises the error again, so that it is pending; nothing when there was none, or another is pending already.
    void raise();

    /// For the script manager.
    static void offer(PyObject* type, PyObject* value, PyObject* traceback);

private:
    ScriptObject m_type, m_value, m_traceback;
    FirstError* m_outer;
};

} // namespace hyxPython
