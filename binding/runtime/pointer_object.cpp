// The type of the objects that carry a native pointer.
#include "binding/runtime/pointer_object.h"

#include "binding/runtime/client_data.h"
#include "binding/runtime/reference.h"
#include "binding/runtime/state.h"
#include "binding/runtime/type_chain.h"

#include <cstdio>
#include <cstring>

using runtime::Reference;

namespace {

SwigPyObject* as_pointer_object(PyObject* object) noexcept {
    return reinterpret_cast<SwigPyObject*>(object);
}

PyObject* represent(PyObject* self) noexcept {
    SwigPyObject* object = as_pointer_object(self);
    Reference text = Reference::take(
        PyUnicode_FromFormat("<Swig Object of type '%s' at %p>", SWIG_Python_PrettyTypeName(object->ty), self));
    if (!text || !object->next)
        return text.release();
    Reference rest = Reference::take(represent(object->next));
    return rest ? PyUnicode_Concat(text.get(), rest.get()) : nullptr;
}

PyObject* compare(PyObject* a, PyObject* b, int op) noexcept {
    if (PyErr_Occurred())
        return nullptr;
    if ((op != Py_EQ && op != Py_NE) || !SwigPyObject_Recognise(b))
        Py_RETURN_NOTIMPLEMENTED;
    bool const same = as_pointer_object(a)->ptr == as_pointer_object(b)->ptr;
    return PyBool_FromLong(same == (op == Py_EQ));
}

PyObject* address(PyObject* self) noexcept {
    return PyLong_FromVoidPtr(as_pointer_object(self)->ptr);
}

PyObject* disown(PyObject* self, PyObject*) noexcept {
    as_pointer_object(self)->own = 0;
    Py_RETURN_NONE;
}

PyObject* acquire(PyObject* self, PyObject*) noexcept {
    as_pointer_object(self)->own = 1;
    Py_RETURN_NONE;
}

PyObject* own(PyObject* self, PyObject* args) noexcept {
    PyObject* value = nullptr;
    if (!PyArg_UnpackTuple(args, "own", 0, 1, &value))
        return nullptr;
    SwigPyObject* object = as_pointer_object(self);
    PyObject* before = PyBool_FromLong(object->own);
    if (value)
        object->own = PyObject_IsTrue(value) != 0; // a failing truth test counts as true
    if (PyErr_Occurred())
        PyErr_Clear();
    return before;
}

PyObject* next(PyObject* self, PyObject*) noexcept {
    PyObject* next = as_pointer_object(self)->next;
    return Py_NewRef(next ? next : Py_None);
}

PyObject* represent_method(PyObject* self, PyObject*) noexcept {
    return represent(self);
}

// Calls the class's destroy function for self; NULL with an error set when it failed.
Reference call_destroy(SwigPyClientData const& data, PyObject* self) noexcept {
    SwigPyObject* object = as_pointer_object(self);
    if (!data.delargs) {
        PyObject* destroy_self = PyCFunction_GET_SELF(data.destroy);
        return Reference::take(PyCFunction_GET_FUNCTION(data.destroy)(destroy_self, self));
    }
    // self is already dying: the callable gets a stand-in.
    Reference stand_in = Reference::take(SwigPyObject_Create(object->ptr, object->ty, 0));
    return stand_in ? Reference::take(PyObject_CallOneArg(data.destroy, stand_in.get())) : Reference();
}

void destroy_native(PyObject* self) noexcept {
    SwigPyObject* object = as_pointer_object(self);
    auto* data = object->ty ? static_cast<SwigPyClientData*>(object->ty->clientdata) : nullptr;
    // The class had data, and the tear-down of the table has released them: the interpreter is ending, which is no
    // leak.
    if (!data && object->ty && object->ty->owndata)
        return;
    if (!data || !data->destroy) {
        std::printf("swig/python detected a memory leak of type '%s', no destructor found.\n",
                    SWIG_Python_PrettyTypeName(object->ty));
        return;
    }
    runtime::SavedError pending;
    if (!call_destroy(*data, self))
        PyErr_WriteUnraisable(data->destroy);
}

void deallocate(PyObject* self) noexcept {
    SwigPyObject* object = as_pointer_object(self);
    PyObject* next = object->next;
    if (object->own == 1) {
        destroy_native(self);
        Py_XDECREF(Swig_Capsule_global);
    }
    Py_XDECREF(next);
    PyTypeObject* type = Py_TYPE(self);
    PyObject_Free(self);
    Py_DECREF(type);
}

PyMethodDef swigobject_methods[] = {
    {"disown", disown, METH_NOARGS, "releases ownership of the pointer"},
    {"acquire", acquire, METH_NOARGS, "acquires ownership of the pointer"},
    {"own", own, METH_VARARGS, "returns/sets ownership of the pointer"},
    {"append", SwigPyObject_append, METH_O, "appends another 'this' object"},
    {"next", next, METH_NOARGS, "returns the next 'this' object"},
    {"__repr__", represent_method, METH_NOARGS, "returns object representation"},
    {nullptr, nullptr, 0, nullptr},
};

char doc[] = "Swig object carries a C/C++ instance pointer";

PyType_Slot slots[] = {
    {Py_tp_dealloc, reinterpret_cast<void*>(deallocate)},
    {Py_tp_repr, reinterpret_cast<void*>(represent)},
    {Py_tp_getattro, reinterpret_cast<void*>(PyObject_GenericGetAttr)},
    {Py_tp_doc, doc},
    {Py_tp_richcompare, reinterpret_cast<void*>(compare)},
    {Py_tp_methods, swigobject_methods},
    {Py_nb_int, reinterpret_cast<void*>(address)},
    {0, nullptr},
};

PyType_Spec spec = {pointer_object_type_name, sizeof(SwigPyObject), 0, Py_TPFLAGS_DEFAULT | Py_TPFLAGS_BASETYPE, slots};

} // namespace

PyTypeObject* SwigPyObject_type() noexcept {
    static PyTypeObject* const type = reinterpret_cast<PyTypeObject*>(PyType_FromSpec(&spec));
    return type;
}

bool SwigPyObject_Recognise(PyObject* object) noexcept {
    PyTypeObject* type = Py_TYPE(object);
    return type == SwigPyObject_type() || std::strcmp(type->tp_name, pointer_object_type_name) == 0;
}

PyObject* SwigPyObject_Create(void* ptr, swig_type_info* ty, int own) noexcept {
    SwigPyObject* object = PyObject_New(SwigPyObject, SwigPyObject_type());
    if (!object)
        return nullptr;
    object->ptr = ptr;
    object->ty = ty;
    object->own = own;
    object->next = nullptr;
    if (own == 1)
        Py_XINCREF(Swig_Capsule_global);
    return reinterpret_cast<PyObject*>(object);
}

PyObject* SwigPyObject_append(PyObject* self, PyObject* other) noexcept {
    if (!SwigPyObject_Recognise(other)) {
        PyErr_SetString(PyExc_TypeError, "Attempt to append a non SwigPyObject");
        return nullptr;
    }
    SwigPyObject* object = as_pointer_object(self);
    as_pointer_object(other)->next = object->next;
    object->next = Py_NewRef(other);
    Py_RETURN_NONE;
}
