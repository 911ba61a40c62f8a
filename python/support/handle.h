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

} // namespace proxy
