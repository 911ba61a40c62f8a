// Which Python object shows which native object, and what keeps the native one alive.
//
// A proxy of an object that counts references holds one, from when a row gives it or its constructor made it until it
// ends. While it lives, rows give the same proxy for the same native object, and it has the most derived class that is
// registered. Objects that do not count are kept by what they lie in: the object whose method gave them.
#pragma once

#include "python/support/handle.h"
#include "python/support/row.h"

namespace proxy {

// A class whose objects count references.
struct SharedClass {
    swig_type_info* type;
    vocabulary::ClassOperations const* operations;
    vocabulary::RecordTable const* records; // of the module that registers it
};

// Reads the classes of a module, once.
void learn_classes(vocabulary::RecordTable const& records);

// The Python object for what a row gave, which is taken over: another one where it is shown already. `owner` is the
// object that the row was called on, or null.
PyObject* show(PyObject* result, PyObject* owner);

// Whose constructor it is: `shared` is null for a class that does not count.
struct ConstructedClass {
    swig_type_info* type;
    SharedClass const* shared;
};

// For a proxy that its constructor has just given its native object. `known` is of the calls before, at first empty.
void hold_constructed(Handle* handle, ConstructedClass& known);

// For a further native object that a constructor gives to an object that has one already: the first is what that holds.
void keep_constructed(PyObject* pointer);

// Drops what a proxy holds, and "this" with it.
void empty(Handle* handle);

// Drops the constructor's reference to the object of a pointer object.
void release(PyObject* pointer);

} // namespace proxy
