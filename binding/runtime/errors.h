// Python exceptions for status codes, overload failures and wrong argument counts.
#pragma once

#include <Python.h>

// The (borrowed) exception type of a status code; RuntimeError for unknown codes. Never fails.
PyObject* SWIG_Python_ErrorType(int code) noexcept;

// Sets the pending exception to (type, value) and releases one reference to value.
void SWIG_Python_SetErrorObj(PyObject* type, PyObject* value) noexcept;

// Raises TypeError with the message of a failed overload choice. A TypeError that is already pending keeps its text
// and traceback, and the message follows it as additional information.
void SWIG_Python_RaiseOrModifyTypeError(char const* message) noexcept;

// Copies the items of a positional tuple (borrowed) into objs and fills the rest up to max with NULL. Returns the
// number of items plus one, or 0 with an exception set. name is the Python-visible function name.
Py_ssize_t SWIG_Python_UnpackTuple(PyObject* args, char const* name, Py_ssize_t min, Py_ssize_t max,
                                   PyObject** objs) noexcept;

namespace runtime {

// Raises the count message of SWIG_Python_UnpackTuple for a number of arguments outside min..max.
void raise_argument_count(char const* name, Py_ssize_t min, Py_ssize_t max, Py_ssize_t given) noexcept;

// Raises the exception of a failed conversion, with the complete message of the argument.
inline void raise_argument_error(int status, char const* message) noexcept {
    PyErr_SetString(SWIG_Python_ErrorType(status == -1 ? -5 : status), message);
}

} // namespace runtime
