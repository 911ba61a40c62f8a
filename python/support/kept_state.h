// The state that a script's classes add to native objects: it stays while the native object does.
//
// When an instance of a derived class ends that native code still has, its class and `__dict__` are kept, and the next
// proxy of the native object gets them back. A kept native object that nobody else has any more ends with the next
// garbage collection, or when many others are kept.
#pragma once

#include "python/support/handle.h"

namespace proxy {

// `tp_finalize` of every proxy.
void keep_state(PyObject* object);

// Whether something was kept for the object at this address.
bool is_kept(void* whole);

// A new instance of the class that was kept for the object at this address, with its state, but without "this"; null
// where none was kept that `wanted` is a base of, and with an error set.
PyObject* revive(void* whole, PyTypeObject* wanted);

// Ends what only its state still holds. A callback of the garbage collector.
PyObject* sweep_kept(PyObject*, PyObject* arguments);

} // namespace proxy
