// Registration of proxy classes and attachment of pointer objects to their instances.
#pragma once

#include <Python.h>

#include <cstdint>

namespace vocabulary {

// CLASS_swigregister: makes cls the proxy class of the type with this index. cls may stand in a 1-tuple.
PyObject* register_class(PyObject* cls, std::int16_t type);

// CLASS_swiginit(self, this): attaches a pointer object to a proxy instance.
PyObject* initialise_instance(PyObject* args);

} // namespace vocabulary
