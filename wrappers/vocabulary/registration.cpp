#include "wrappers/vocabulary/registration.h"

#include "runtime/client_data.h"
#include "runtime/errors.h"
#include "runtime/pointers.h"
#include "runtime/state.h"
#include "runtime/type_chain.h"

PyObject *wrappers::register_class(PyObject *cls, std::int16_t type)
{
    PyObject *proxy = nullptr;
    if (!SWIG_Python_UnpackTuple(cls, "swigregister", 1, 1, &proxy))
        return nullptr;
    SWIG_TypeAdoptClientData(swig_types[type], SwigPyClientData_New(proxy));
    Py_RETURN_NONE;
}

PyObject *wrappers::initialise_instance(PyObject *args)
{
    PyObject *objects[2];
    if (!SWIG_Python_UnpackTuple(args, "swiginit", 2, 2, objects))
        return nullptr;
    if (SwigPyObject *existing = SWIG_Python_GetSwigThis(objects[0]))
        return SwigPyObject_append(reinterpret_cast<PyObject *>(existing), objects[1]);
    if (PyObject_SetAttr(objects[0], SWIG_This(), objects[1]) != 0)
        return nullptr;
    Py_RETURN_NONE;
}
