// The `__init__` of a proxy class: makes the native object with its `new_` row and attaches it with its
// `_swiginit` row. A class with a director is told whom its virtual functions call: nobody (None) for the
// proxy class itself, the Python object for an instance of a class derived from it.
#include "python/support/handle.h"
#include "python/support/operation.h"
#include "python/support/shown.h"

#include <structmember.h>

#include <cstddef>
#include <utility>
#include <vector>

namespace proxy {
namespace {

struct Constructor {
    Operation operation; // its row is `new_`
    Row attach;
    int with_director;   // truth
    PyTypeObject* owner; // borrowed: the class holds its constructor; null until the class is made
    bool makes_handles;  // the owner's instances are handles
    ConstructedClass constructed;
};

PyObject* make_native(Constructor const* self, PyObject* const* arguments, Py_ssize_t count, PyObject* keyword_names) {
    Row const& row = self->operation.row;
    Spoken const& spoken = self->operation.spoken;
    if (!self->with_director)
        return keyword_names ? recover(row, spoken, arguments + 1, count - 1, keyword_names)
                             : row.call(spoken, arguments + 1, count - 1);
    constexpr Py_ssize_t usual_count = 8;
    PyObject* usual[usual_count];
    std::vector<PyObject*> many;
    PyObject** forwarded = usual;
    Py_ssize_t const total = count + (keyword_names ? PyTuple_GET_SIZE(keyword_names) : 0);
    if (total > usual_count) {
        many.resize(static_cast<std::size_t>(total));
        forwarded = many.data();
    }
    std::copy(arguments, arguments + total, forwarded);
    if (Py_TYPE(arguments[0]) == self->owner)
        forwarded[0] = Py_None;
    return keyword_names ? recover(row, spoken, forwarded, count, keyword_names) : row.call(spoken, forwarded, count);
}

// Gives the object its native object, which it takes over. A first one goes where `_swiginit` would put it.
PyObject* attach_native(Constructor* self, PyObject* object, PyObject* native) {
    if (auto* handle = reinterpret_cast<Handle*>(object); self->makes_handles && !handle->pointer) {
        handle->pointer = native;
        handle->is_called = self->with_director && Py_TYPE(object) != self->owner;
        hold_constructed(handle, self->constructed);
        Py_RETURN_NONE;
    }
    keep_constructed(native);
    PyObject* const attached[] = {object, native};
    PyObject* result = self->attach.call(self->operation.spoken, attached, 2);
    Py_DECREF(native);
    return result;
}

PyObject* call_constructor(PyObject* callable, PyObject* const* arguments, size_t flags, PyObject* keyword_names) {
    auto* self = reinterpret_cast<Constructor*>(callable);
    Py_ssize_t const count = PyVectorcall_NARGS(flags);
    if (count < 1 || (self->owner && !PyObject_TypeCheck(arguments[0], self->owner))) {
        PyErr_Format(PyExc_TypeError, "%U.__init__ needs an object of its class first",
                     self->operation.spoken.owner_name);
        return nullptr;
    }
    PyObject* native = make_native(self, arguments, count, keyword_names);
    if (!native)
        return nullptr;
    return attach_native(self, arguments[0], native);
}

extern PyTypeObject constructor_type;

// The constructor of a class, as long as no script has replaced it or the allocation.
Constructor* own_constructor(PyTypeObject* type) {
    static PyObject* const name = PyUnicode_InternFromString("__init__");
    PyObject* found = _PyType_Lookup(type, name); // borrowed
    auto* self = reinterpret_cast<Constructor*>(found);
    bool const own =
        found && Py_IS_TYPE(found, &constructor_type) && self->owner == type && type->tp_new == handle_type.tp_new;
    return own ? self : nullptr;
}

PyObject* call_through_type(PyObject* type, PyObject* const* arguments, Py_ssize_t count, PyObject* keyword_names) {
    PyObject* positional = PyTuple_New(count);
    PyObject* keywords = keyword_names ? PyDict_New() : nullptr;
    bool ready = positional && (keywords || !keyword_names);
    for (Py_ssize_t i = 0; ready && i < count; ++i)
        PyTuple_SET_ITEM(positional, i, Py_NewRef(arguments[i]));
    for (Py_ssize_t i = 0; ready && keywords && i < PyTuple_GET_SIZE(keyword_names); ++i)
        ready = PyDict_SetItem(keywords, PyTuple_GET_ITEM(keyword_names, i), arguments[count + i]) == 0;
    PyObject* result = ready ? PyType_Type.tp_call(type, positional, keywords) : nullptr;
    Py_XDECREF(positional);
    Py_XDECREF(keywords);
    return result;
}

// Calls a proxy class as `type.__call__` does, without its argument tuple: values are made all the time.
PyObject* make_instance(PyObject* callable, PyObject* const* arguments, size_t flags, PyObject* keyword_names) {
    auto* type = reinterpret_cast<PyTypeObject*>(callable);
    Py_ssize_t const count = PyVectorcall_NARGS(flags);
    Constructor* constructor = own_constructor(type);
    if (keyword_names || !constructor || !(flags & PY_VECTORCALL_ARGUMENTS_OFFSET)) [[unlikely]]
        return call_through_type(callable, arguments, count, keyword_names);
    PyObject* object = type->tp_alloc(type, 0);
    if (!object)
        return nullptr;
    // The caller lends the place in front of the arguments.
    PyObject** with_self = const_cast<PyObject**>(arguments) - 1;
    PyObject* const lent = std::exchange(with_self[0], object);
    PyObject* result =
        call_constructor(reinterpret_cast<PyObject*>(constructor), with_self, static_cast<size_t>(count) + 1, nullptr);
    with_self[0] = lent;
    Py_XDECREF(result);
    if (!result)
        Py_CLEAR(object);
    return object;
}

PyObject* make_constructor(PyTypeObject* type, PyObject* arguments, PyObject* keywords) {
    static char const* const names[] = {"new", "attach", "signature", "doc", "parameters", "with_director", nullptr};
    PyObject *flat = nullptr, *attach = nullptr, *signature = Py_None, *doc = Py_None, *parameters = Py_None;
    int with_director = 0;
    if (!PyArg_ParseTupleAndKeywords(arguments, keywords, "OO|OOOp", const_cast<char**>(names), &flat, &attach,
                                     &signature, &doc, &parameters, &with_director))
        return nullptr;
    auto* self = reinterpret_cast<Constructor*>(type->tp_alloc(type, 0));
    if (!self)
        return nullptr;
    self->operation.vectorcall = call_constructor;
    self->with_director = with_director;
    self->operation.spoken.kind = Spoken::Kind::constructor;
    if (!find_row(flat, self->operation.row) || !find_row(attach, self->attach) ||
        !set_texts(&self->operation, flat, signature, doc, parameters)) {
        Py_DECREF(self);
        return nullptr;
    }
    return reinterpret_cast<PyObject*>(self);
}

void dealloc(PyObject* object) {
    auto* self = reinterpret_cast<Constructor*>(object);
    Py_XDECREF(self->attach.flat);
    operation_dealloc(object);
}

PyObject* bind(PyObject* descriptor, PyObject* object, PyObject*) {
    if (!object || object == Py_None)
        return Py_NewRef(descriptor);
    return PyMethod_New(descriptor, object);
}

PyObject* set_name(PyObject* object, PyObject* arguments) {
    PyObject* owner = PyTuple_Size(arguments) > 0 ? PyTuple_GET_ITEM(arguments, 0) : nullptr;
    if (owner && PyType_Check(owner)) {
        auto* self = reinterpret_cast<Constructor*>(object);
        self->owner = reinterpret_cast<PyTypeObject*>(owner);
        self->makes_handles = PyType_IsSubtype(self->owner, &handle_type);
        if (self->makes_handles && PyType_CheckExact(owner))
            self->owner->tp_vectorcall = make_instance;
    }
    return operation_set_name(object, arguments);
}

PyMethodDef methods[] = {
    {"__set_name__", set_name, METH_VARARGS, nullptr},
    {},
};

PyTypeObject make_type() {
    PyTypeObject type = {PyVarObject_HEAD_INIT(nullptr, 0)};
    type.tp_name = "_hyx_proxy.constructor";
    type.tp_doc = "The constructor of a native class.";
    type.tp_basicsize = sizeof(Constructor);
    type.tp_flags = Py_TPFLAGS_DEFAULT | Py_TPFLAGS_HAVE_VECTORCALL | Py_TPFLAGS_METHOD_DESCRIPTOR;
    type.tp_vectorcall_offset = offsetof(Operation, vectorcall);
    type.tp_call = PyVectorcall_Call;
    type.tp_dealloc = dealloc;
    type.tp_new = make_constructor;
    type.tp_descr_get = bind;
    type.tp_members = operation_members;
    type.tp_getset = operation_getset;
    type.tp_methods = methods;
    return type;
}

PyTypeObject constructor_type = make_type();

} // namespace

bool add_constructor(PyObject* module) {
    return PyModule_AddType(module, &constructor_type) == 0;
}

} // namespace proxy
