// The attribute under which an element proxy keeps its container alive.
#pragma once

#include <Python.h>

namespace containers {

// The string "__swig_container" (borrowed), made once.
PyObject* container_key();

} // namespace containers
