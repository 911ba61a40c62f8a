// The callables that a proxy class is made of.
//
// `method`       a method: an unbound descriptor, so that `object.name(...)` calls the row with the object
//                and the arguments as they lie on the interpreter's stack, without a bound method or a tuple
// `function`     a free function or static method: the same, but it never binds
// `constructor`  the `__init__` of a class: makes the native object and attaches it
// `member`       a data member: a property over its two accessor rows
#pragma once

#include "python/support/row.h"

namespace proxy {

// The part that method, function and constructor share. The texts are str or None.
struct Operation {
    PyObject_HEAD vectorcallfunc vectorcall;
    Row row;
    Spoken spoken;
    PyObject* package;   // what `__module__` gives
    PyObject* signature; // what `__text_signature__` gives
    PyObject* doc;
};

// Readies the four types and adds them to the support module. False with an error set.
[[nodiscard]] bool add_operations(PyObject* module);
[[nodiscard]] bool add_members(PyObject* module);
[[nodiscard]] bool add_constructor(PyObject* module);
// The base class of every proxy class.
[[nodiscard]] bool add_handle(PyObject* module);

// Shared by the types of this room.
[[nodiscard]] bool set_texts(Operation* self, PyObject* flat, PyObject* signature, PyObject* doc, PyObject* parameters);
void operation_dealloc(PyObject* object);
PyObject* operation_set_name(PyObject* object, PyObject* arguments);
extern PyMemberDef operation_members[];
extern PyGetSetDef operation_getset[];
extern PyMethodDef operation_methods[];

} // namespace proxy
