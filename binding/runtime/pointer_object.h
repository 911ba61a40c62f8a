// The Python object that carries one native pointer with its type and ownership.
#pragma once

#include "binding/runtime/type_records.h"

#include <Python.h>

// Read by sibling modules in this order after the object header.
struct SwigPyObject {
    PyObject_HEAD void* ptr; // the native object
    swig_type_info* ty;      // its descriptor, may be NULL
    std::int32_t own;        // exactly 1: Python deletes the native object with this one
    PyObject* next;          // further views of the same Python instance, owned; may be NULL
};

static_assert(offsetof(SwigPyObject, ptr) == 16);
static_assert(offsetof(SwigPyObject, ty) == 24);
static_assert(offsetof(SwigPyObject, own) == 32);
static_assert(offsetof(SwigPyObject, next) == 40);

inline constexpr char pointer_object_type_name[] = "swig_runtime_data4.SwigPyObject";

// The type object (borrowed), created on first use and kept for the life of the process.
PyTypeObject* SwigPyObject_type() noexcept;

// True for pointer objects of this module and, by type name, of its siblings.
bool SwigPyObject_Recognise(PyObject* object) noexcept;

// A new bare pointer object. An owned one keeps the published type table alive.
PyObject* SwigPyObject_Create(void* ptr, swig_type_info* ty, int own) noexcept;

// Inserts other right after self in self's chain of views; None, or NULL with TypeError for a foreign object.
PyObject* SwigPyObject_append(PyObject* self, PyObject* other) noexcept;
