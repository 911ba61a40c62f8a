// The instances of proxy classes.
#pragma once

#include <Python.h>

namespace proxy {

struct Handle {
    PyObject_HEAD PyObject* pointer; // "this"; null before the constructor ran
    PyObject* container;             // "__swig_container"; usually null
    PyObject* weak_references;
};

// The base class of every proxy class.
extern PyTypeObject handle_type;

// The base class of those whose instances are buffers: what their `__buffer__` gives, which takes the buffer flags.
extern PyTypeObject buffer_type;

} // namespace proxy
