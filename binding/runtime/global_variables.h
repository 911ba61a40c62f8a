// Module-level values: integer constants, and native variables that stay live behind the object "cvar".
#pragma once

#include <Python.h>

// Stores value in the module's dict and releases one reference to it.
void SWIG_Python_SetConstant(PyObject* dict, char const* name, PyObject* value) noexcept;

using swig_get_attr = PyObject* (*)();    // a new reference, or NULL with or without an error
using swig_set_attr = int (*)(PyObject*); // 0, or 1 with or without an error; NULL asks for deletion

// The link object (borrowed), one a process; NULL when it cannot be made.
PyObject* SWIG_Python_Globals() noexcept;

// Links a native variable under a Python name, in front of those linked before.
void SWIG_Python_addvarlink(PyObject* link, char const* name, swig_get_attr get_attr, swig_set_attr set_attr) noexcept;
