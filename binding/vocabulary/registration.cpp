// Lets a proxy class announce itself, and its instances take up their pointers.
#include "binding/vocabulary/registration.h"

#include "binding/runtime/client_data.h"
#include "binding/runtime/errors.h"
#include "binding/runtime/pointers.h"
#include "binding/runtime/state.h"
#include "binding/runtime/type_chain.h"

PyObject* vocabulary::register_class(PyObject* cls, std::int16_t type) {
    PyObject* proxy = nullptr;
    if (!SWIG_Python_UnpackTuple(cls, "swigregister", 1, 1, &proxy))
        return nullptr;
    SWIG_TypeAdoptClientData(swig_types[type], SwigPyClientData_New(proxy));
    Py_RETURN_NONE;
}

PyObject* vocabulary::initialise_instance(PyObject* args) {
    PyObject* objects[2];
    if (!SWIG_Python_UnpackTuple(args, "swiginit", 2, 2, objects))
        return nullptr;
    if (SwigPyObject* existing = SWIG_Python_GetSwigThis(objects[0]))
        return SwigPyObject_append(reinterpret_cast<PyObject*>(existing), objects[1]);
    if (PyObject_SetAttr(objects[0], SWIG_This(), objects[1]) != 0)
        return nullptr;
    Py_RETURN_NONE;
}
