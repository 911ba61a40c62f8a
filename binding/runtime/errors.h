// Python exceptions for status codes, overload failures and wrong argument counts.
#pragma once

#include "binding/runtime/status.h"

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

// Whether an error is set that ends the program (KeyboardInterrupt, SystemExit): nothing clears or replaces it.
inline bool is_ending() noexcept {
    return PyErr_Occurred() && !PyErr_ExceptionMatches(PyExc_Exception);
}

// Forgets an error that the caller answers for otherwise.
inline void clear_error() noexcept {
    if (!is_ending())
        PyErr_Clear();
}

// Raises the exception of a failed conversion, with the complete message of the argument. An error of the user's own
// code is the better one.
inline void raise_argument_error(int status, char const* message) noexcept {
    if (status == SWIG_UserError || is_ending())
        return;
    PyErr_SetString(SWIG_Python_ErrorType(status == -1 ? -5 : status), message);
}

} // namespace runtime
