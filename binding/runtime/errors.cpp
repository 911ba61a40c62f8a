// Raises Python errors with the texts that scripts know.
#include "binding/runtime/errors.h"

#include <algorithm>
#include <iterator>

PyObject* SWIG_Python_ErrorType(int code) noexcept {
    PyObject* const types[] = {
        PyExc_TypeError,         // -13, null reference
        PyExc_MemoryError,       // -12
        PyExc_AttributeError,    // -11
        PyExc_SystemError,       // -10
        PyExc_ValueError,        // -9
        PyExc_SyntaxError,       // -8
        PyExc_OverflowError,     // -7
        PyExc_ZeroDivisionError, // -6
        PyExc_TypeError,         // -5
        PyExc_IndexError,        // -4
        PyExc_RuntimeError,      // -3
        PyExc_IOError,           // -2
    };
    int const index = code + 13;
    return index >= 0 && index < int(std::size(types)) ? types[index] : PyExc_RuntimeError;
}

void SWIG_Python_SetErrorObj(PyObject* type, PyObject* value) noexcept {
    PyErr_SetObject(type, value);
    Py_XDECREF(value);
}

void SWIG_Python_RaiseOrModifyTypeError(char const* message) noexcept {
    if (!PyErr_Occurred() || !PyErr_ExceptionMatches(PyExc_TypeError)) {
        PyErr_SetString(PyExc_TypeError, message);
        return;
    }
    PyObject* type = nullptr;
    PyObject* value = nullptr;
    PyObject* traceback = nullptr;
    PyErr_Fetch(&type, &value, &traceback);
    // An error that was set without a value has no text to keep.
    PyObject* const text = value ? value : Py_None;
    if (PyObject* extended = PyUnicode_FromFormat("%S\nAdditional information:\n%s", text, message)) {
        Py_XDECREF(value);
        value = extended;
    }
    PyErr_Restore(type, value, traceback);
}

namespace {

char const* qualifier(Py_ssize_t min, Py_ssize_t max, char const* otherwise) noexcept {
    return min == max ? "" : otherwise;
}

} // namespace

void runtime::raise_argument_count(char const* name, Py_ssize_t min, Py_ssize_t max, Py_ssize_t given) noexcept {
    if (given < min)
        PyErr_Format(PyExc_TypeError, "%s expected %s%d arguments, got %d", name, qualifier(min, max, "at least "),
                     int(min), int(given));
    else
        PyErr_Format(PyExc_TypeError, "%s expected %s%d arguments, got %d", name, qualifier(min, max, "at most "),
                     int(max), int(given));
}

Py_ssize_t SWIG_Python_UnpackTuple(PyObject* args, char const* name, Py_ssize_t min, Py_ssize_t max,
                                   PyObject** objs) noexcept {
    if (!args) {
        if (min == 0 && max == 0)
            return 1;
        PyErr_Format(PyExc_TypeError, "%s expected %s%d arguments, got none", name, qualifier(min, max, "at least "),
                     int(min));
        return 0;
    }
    if (!PyTuple_Check(args)) {
        if (min <= 1 && max >= 1) {
            objs[0] = args;
            std::fill(objs + 1, objs + max, nullptr);
            return 2;
        }
        PyErr_SetString(PyExc_SystemError, "UnpackTuple() argument list is not a tuple");
        return 0;
    }
    Py_ssize_t const given = PyTuple_GET_SIZE(args);
    if (given < min || given > max) {
        runtime::raise_argument_count(name, min, max, given);
        return 0;
    }
    for (Py_ssize_t i = 0; i < given; ++i)
        objs[i] = PyTuple_GET_ITEM(args, i);
    std::fill(objs + given, objs + max, nullptr);
    return given + 1;
}
