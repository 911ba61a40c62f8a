// What a type's descriptor knows of its Python proxy class.
#pragma once

#include "binding/runtime/type_records.h"

#include <Python.h>

// Attached to swig_type_info::clientdata when a proxy class registers. Shared with the sibling modules.
struct SwigPyClientData {
    PyObject* klass;           // the proxy class, owned
    PyObject* newraw;          // its __new__, owned; NULL for type objects
    PyObject* newargs;         // the class, or a 1-tuple holding it; owned
    PyObject* destroy;         // its __swig_destroy__, owned; may be NULL
    std::int32_t delargs;      // 1: destroy is called through the call protocol; 0: a native one-argument function
    std::int32_t implicitconv; // 0
    PyTypeObject* pytype;      // type whose instances are pointer objects themselves; may be NULL
};

static_assert(offsetof(SwigPyClientData, newraw) == 8);
static_assert(offsetof(SwigPyClientData, newargs) == 16);
static_assert(offsetof(SwigPyClientData, destroy) == 24);
static_assert(offsetof(SwigPyClientData, delargs) == 32);
static_assert(offsetof(SwigPyClientData, implicitconv) == 36);
static_assert(offsetof(SwigPyClientData, pytype) == 40);
static_assert(sizeof(SwigPyClientData) == 48);

// A new block for a proxy class, or NULL. No error is left pending.
SwigPyClientData* SwigPyClientData_New(PyObject* cls) noexcept;

// Drops the references of a block and frees it. NULL is accepted.
void SwigPyClientData_Del(SwigPyClientData* data) noexcept;

// A new proxy instance around the pointer object, made without running __init__; NULL with an error set.
PyObject* SWIG_Python_NewShadowInstance(SwigPyClientData* data, PyObject* swig_this) noexcept;
