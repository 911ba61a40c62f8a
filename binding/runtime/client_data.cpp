// Remembers how instances of a proxy class are made without their `__init__`.
#include "binding/runtime/client_data.h"

#include "binding/runtime/reference.h"
#include "binding/runtime/state.h"

#include <cstdlib>

using runtime::Reference;

namespace {

// Fills in how instances of cls are made without __init__. A failed look-up of __new__ stays pending.
bool find_allocator(SwigPyClientData& data, PyObject* cls) noexcept {
    if (PyType_Check(cls)) {
        data.newargs = Py_NewRef(cls);
        return true;
    }
    data.newraw = PyObject_GetAttrString(cls, "__new__");
    if (!data.newraw) {
        data.newargs = Py_NewRef(cls);
        return true;
    }
    data.newargs = PyTuple_Pack(1, cls);
    return data.newargs != nullptr;
}

bool is_native_one_argument(PyObject* function) noexcept {
    return PyCFunction_Check(function) && (PyCFunction_GET_FLAGS(function) & METH_O) != 0;
}

} // namespace

SwigPyClientData* SwigPyClientData_New(PyObject* cls) noexcept {
    if (!cls)
        return nullptr;
    auto* data = static_cast<SwigPyClientData*>(std::calloc(1, sizeof(SwigPyClientData)));
    data->klass = Py_NewRef(cls);
    if (!find_allocator(*data, cls)) {
        PyErr_Clear();
        SwigPyClientData_Del(data);
        return nullptr;
    }
    // A look-up error left by find_allocator also discards a destroy function that is found here.
    data->destroy = PyObject_GetAttrString(cls, "__swig_destroy__");
    if (PyErr_Occurred()) {
        PyErr_Clear();
        Py_CLEAR(data->destroy);
    }
    data->delargs = data->destroy && !is_native_one_argument(data->destroy);
    return data;
}

void SwigPyClientData_Del(SwigPyClientData* data) noexcept {
    if (!data)
        return;
    Py_XDECREF(data->klass);
    Py_XDECREF(data->newraw);
    Py_XDECREF(data->newargs);
    Py_XDECREF(data->destroy);
    std::free(data);
}

PyObject* SWIG_Python_NewShadowInstance(SwigPyClientData* data, PyObject* swig_this) noexcept {
    if (data->newraw) {
        Reference instance = Reference::take(PyObject_Call(data->newraw, data->newargs, nullptr));
        if (!instance || PyObject_SetAttr(instance.get(), SWIG_This(), swig_this) != 0)
            return nullptr;
        return instance.release();
    }
    Reference arguments = Reference::take(PyTuple_New(0));
    if (!arguments)
        return nullptr;
    Reference keywords = Reference::take(PyDict_New());
    if (!keywords)
        return nullptr;
    auto* type = reinterpret_cast<PyTypeObject*>(data->newargs);
    if (!PyType_Check(data->newargs) || !type->tp_new) {
        PyErr_Format(PyExc_TypeError, "cannot create instances of the proxy class %R", data->newargs);
        return nullptr;
    }
    Reference instance = Reference::take(type->tp_new(type, arguments.get(), keywords.get()));
    if (!instance || PyObject_SetAttr(instance.get(), SWIG_This(), swig_this) != 0)
        return nullptr;
#if PY_VERSION_HEX < 0x030C0000
    // Later interpreters stop remembering a type's look-ups for good after a thousand of these.
    PyType_Modified(Py_TYPE(instance.get()));
#endif
    return instance.release();
}
