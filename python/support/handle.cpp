// The base of every proxy class: room for "this", the pointer object that holds the native object, for the
// container that keeps an element's memory alive, and for weak references. Instances of a proxy class carry
// nothing else; a class that a script derives gets a `__dict__` as usual. Neither slot can close a cycle of
// references: a pointer object holds no Python object, and a container does not know its elements' proxies.
//
// All proxy classes share this one layout, so that a class may derive from several.
#include "python/support/handle.h"

#include "python/support/kept_state.h"
#include "python/support/operation.h"
#include "python/support/shown.h"

#include <structmember.h>

#include <cstddef>

namespace proxy {
namespace {

PyObject* new_handle(PyTypeObject* type, PyObject*, PyObject*) {
    return type->tp_alloc(type, 0);
}

// Runs for a class without a constructor of its own.
int refuse_construction(PyObject* object, PyObject*, PyObject*) {
    PyErr_Format(PyExc_TypeError, "%s has no constructor: the library makes its objects", Py_TYPE(object)->tp_name);
    return -1;
}

void dealloc(PyObject* object) {
    auto* self = reinterpret_cast<Handle*>(object);
    if (self->weak_references)
        PyObject_ClearWeakRefs(object);
    if (self->held)
        empty(self);
    Py_XDECREF(self->pointer);
    Py_XDECREF(self->container);
    Py_TYPE(object)->tp_free(object);
}

PyObject* pointer_of(PyObject* object) {
    PyObject* pointer = reinterpret_cast<Handle*>(object)->pointer;
    if (!pointer)
        PyErr_Format(PyExc_ValueError, "this %s holds no native object: call its base class's __init__ first",
                     Py_TYPE(object)->tp_name);
    return pointer;
}

// -1 with an error set when the object holds nothing.
int is_owned(PyObject* object) {
    PyObject* pointer = pointer_of(object);
    PyObject* owned = pointer ? PyObject_CallMethod(pointer, "own", nullptr) : nullptr;
    if (!owned)
        return -1;
    int const answer = PyObject_IsTrue(owned);
    Py_DECREF(owned);
    return answer;
}

PyObject* get_owned(PyObject* object, void*) {
    int const owned = is_owned(object);
    return owned < 0 ? nullptr : PyBool_FromLong(owned);
}

int set_owned(PyObject* object, PyObject* value, void*) {
    if (!value) {
        PyErr_SetString(PyExc_AttributeError, "'thisown' cannot be deleted");
        return -1;
    }
    PyObject* pointer = pointer_of(object);
    PyObject* before = pointer ? PyObject_CallMethod(pointer, "own", "O", value) : nullptr;
    Py_XDECREF(before);
    return before ? 0 : -1;
}

PyObject* get_package(PyTypeObject* type) {
    return PyObject_GetAttrString(reinterpret_cast<PyObject*>(type), "__module__");
}

// Says what the object is without asking the native side, which may be gone when it was only borrowed.
PyObject* repr(PyObject* object) {
    PyTypeObject* type = Py_TYPE(object);
    PyObject* package = get_package(type);
    if (!package)
        return nullptr;
    PyObject* text = nullptr;
    if (!reinterpret_cast<Handle*>(object)->pointer) {
        text = PyUnicode_FromFormat("<%S.%s, holds nothing>", package, type->tp_name);
    } else if (PyObject* address = PyNumber_Long(reinterpret_cast<Handle*>(object)->pointer)) {
        int const owned = is_owned(object);
        if (owned >= 0)
            text = PyUnicode_FromFormat("<%S.%s, %s, at %p>", package, type->tp_name, owned ? "owned" : "borrowed",
                                        PyLong_AsVoidPtr(address));
        Py_DECREF(address);
    }
    Py_DECREF(package);
    return text;
}

// Two handles are equal when they hold the same native object.
PyObject* compare(PyObject* left, PyObject* right, int operation) {
    if ((operation != Py_EQ && operation != Py_NE) || !PyObject_TypeCheck(right, &handle_type))
        Py_RETURN_NOTIMPLEMENTED;
    PyObject* left_pointer = reinterpret_cast<Handle*>(left)->pointer;
    PyObject* right_pointer = reinterpret_cast<Handle*>(right)->pointer;
    if (!left_pointer || !right_pointer)
        return PyBool_FromLong((left == right) == (operation == Py_EQ));
    return PyObject_RichCompare(left_pointer, right_pointer, operation);
}

Py_hash_t hash(PyObject* object) {
    PyObject* pointer = reinterpret_cast<Handle*>(object)->pointer;
    PyObject* address = pointer ? PyNumber_Long(pointer) : PyLong_FromVoidPtr(object);
    if (!address)
        return -1;
    Py_hash_t const value = PyObject_Hash(address);
    Py_DECREF(address);
    return value;
}

// Tells the error which name was meant, so that Python shows the nearest one, as it does for reading.
int set_attribute(PyObject* object, PyObject* name, PyObject* value) {
    int const status = PyObject_GenericSetAttr(object, name, value);
    if (status == 0 || !PyErr_ExceptionMatches(PyExc_AttributeError))
        return status;
    PyObject *type = nullptr, *error = nullptr, *trace = nullptr;
    PyErr_Fetch(&type, &error, &trace);
    PyErr_NormalizeException(&type, &error, &trace);
    if (PyObject_SetAttrString(error, "name", name) < 0 || PyObject_SetAttrString(error, "obj", object) < 0)
        PyErr_Clear();
    PyErr_Restore(type, error, trace);
    return status;
}

PyMemberDef members[] = {
    {"this", T_OBJECT_EX, offsetof(Handle, pointer), 0, "the pointer object that holds the native object"},
    {"__swig_container", T_OBJECT_EX, offsetof(Handle, container), 0, "the container that this element lies in"},
    {},
};

PyGetSetDef getset[] = {
    {"thisown", get_owned, set_owned, "whether Python deletes the native object", nullptr},
    {},
};

PyTypeObject make_type() {
    PyTypeObject type = {PyVarObject_HEAD_INIT(nullptr, 0)};
    type.tp_name = "_hyx_proxy.Handle";
    type.tp_doc = "The base of every proxy class: holds one native object.";
    type.tp_basicsize = sizeof(Handle);
    type.tp_weaklistoffset = offsetof(Handle, weak_references);
    type.tp_flags = Py_TPFLAGS_DEFAULT | Py_TPFLAGS_BASETYPE;
    type.tp_new = new_handle;
    type.tp_init = refuse_construction;
    type.tp_dealloc = dealloc;
    type.tp_finalize = keep_state;
    type.tp_repr = repr;
    type.tp_richcompare = compare;
    type.tp_hash = hash;
    type.tp_setattro = set_attribute;
    type.tp_members = members;
    type.tp_getset = getset;
    return type;
}

// The interpreter learns to ask `__buffer__` itself only in its version 3.12.
int get_buffer(PyObject* object, Py_buffer* view, int flags) {
    view->obj = nullptr;
    PyObject* given = PyObject_CallMethod(object, "__buffer__", "i", flags);
    if (!given)
        return -1;
    int const status = PyObject_GetBuffer(given, view, flags); // the view holds what was given
    Py_DECREF(given);
    return status;
}

PyBufferProcs buffer_procedures = {get_buffer, nullptr};

PyTypeObject make_buffer_type() {
    PyTypeObject type = {PyVarObject_HEAD_INIT(nullptr, 0)};
    type.tp_name = "_hyx_proxy.Buffer";
    type.tp_doc = "The base of the proxy classes whose objects are arrays of numbers.";
    type.tp_basicsize = sizeof(Handle);
    type.tp_flags = Py_TPFLAGS_DEFAULT | Py_TPFLAGS_BASETYPE;
    type.tp_base = &handle_type;
    type.tp_as_buffer = &buffer_procedures;
    return type;
}

} // namespace

PyTypeObject handle_type = make_type();
PyTypeObject buffer_type = make_buffer_type();

bool add_handle(PyObject* module) {
    return PyModule_AddType(module, &handle_type) == 0 && PyModule_AddType(module, &buffer_type) == 0;
}

} // namespace proxy
