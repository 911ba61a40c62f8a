// The instances of proxy classes.
#pragma once

#include "binding/vocabulary/record.h"

#include <Python.h>

namespace proxy {

struct Handle {
    PyObject_HEAD PyObject* pointer; // "this"; null before the constructor ran
    PyObject* container;             // "__swig_container"; usually null
    PyObject* weak_references;
    vocabulary::Family const* family;
    void* held;         // the root of the native object that this keeps alive; null for none
    void* shown;        // its address; set with `held`
    bool has_reference; // a reference of its own; else the pointer object's is enough, as long as that owns
    bool is_called;     // by native code: a script's class with a director
    bool let_go;        // a called one whose constructor's reference has been dropped
    Handle* next_shown; // in the table of the objects that Python sees
};

// The base class of every proxy class.
extern PyTypeObject handle_type;

// The base class of those whose instances are buffers: what their `__buffer__` gives, which takes the buffer flags.
extern PyTypeObject buffer_type;

} // namespace proxy
