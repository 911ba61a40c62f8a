// The call that every overridden function of a director makes: the Python method of the same name, with converted
// arguments, and what becomes of its failure.
#pragma once

#include "directors/director.h"

#include <array>

namespace Swig {

// One overridable method. Lives for the process, since it keeps its name as a Python string.
struct DirectorMethod {
    const char *class_name; // of the Python proxy
    const char *name;
    const char *qualified;  // reporting form: the name under which failures are registered; NULL: raising form
    PyObject *text = nullptr;
};

// Native arguments as new Python objects.
inline runtime::Reference to_python(bool value) { return runtime::Reference::take(PyBool_FromLong(value)); }
inline runtime::Reference to_python(int value) { return runtime::Reference::take(PyLong_FromLong(value)); }
inline runtime::Reference to_python(unsigned int value) { return runtime::Reference::take(PyLong_FromSize_t(value)); }
inline runtime::Reference to_python(float value) { return runtime::Reference::take(PyFloat_FromDouble(value)); }
// A proxy that does not own the object; `type` is the readable name of the pointer's type.
runtime::Reference to_python(void *object, const char *type);

// Calls the method with arguments[1] to arguments[count]; arguments[0] is room for self. Returns the result, or nothing
// after a failure in the reporting form. A Python error that was pending before is kept aside and left pending.
runtime::Reference call_python(Director const &director, DirectorMethod &method, PyObject **arguments,
                               std::size_t count);

template <class... A>
runtime::Reference call_python(Director const &director, DirectorMethod &method, A const &...arguments)
{
    std::array<PyObject *, sizeof...(A) + 1> slots{nullptr, arguments.get()...};
    return call_python(director, method, slots.data(), sizeof...(A));
}

// The bool that a Python method returned; false after a failure. `signature` names the native function.
// Throws DirectorTypeMismatchException for any other object.
bool to_bool(runtime::Reference const &result, const char *signature);

} // namespace Swig
