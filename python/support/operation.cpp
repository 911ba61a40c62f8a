// Methods and functions over a row.
#include "python/support/operation.h"

#include "python/support/keywords.h"

#include <structmember.h>

#include <cstddef>

namespace proxy {

namespace {

// One str a form, or None.
bool are_parameters(PyObject* parameters, std::size_t form_count) {
    bool fit = parameters == Py_None ||
               (PyTuple_Check(parameters) && PyTuple_GET_SIZE(parameters) == static_cast<Py_ssize_t>(form_count));
    for (Py_ssize_t i = 0; fit && parameters != Py_None && i < PyTuple_GET_SIZE(parameters); ++i)
        fit = PyUnicode_Check(PyTuple_GET_ITEM(parameters, i));
    if (!fit)
        PyErr_Format(PyExc_TypeError, "parameters must be a tuple of %zu str, one a form, not %R", form_count,
                     parameters);
    return fit;
}

} // namespace

bool set_texts(Operation* self, PyObject* flat, PyObject* signature, PyObject* doc, PyObject* parameters) {
    if (!are_parameters(parameters, self->row.function->form_count))
        return false;
    Function const& function = *self->row.function;
    self->spoken.parameters = Py_NewRef(parameters);
    self->spoken.leading = parameters != Py_None && function.form_count > 0
                               ? function.forms[0].maximum - read_parameters(PyTuple_GET_ITEM(parameters, 0)).size()
                               : self->row.has_self && function.role != vocabulary::Role::constructor;
    self->spoken.name = PyObject_GetAttrString(flat, "__name__");
    self->spoken.owner_name = Py_NewRef(Py_None);
    self->package = Py_NewRef(Py_None);
    self->signature = Py_NewRef(signature);
    self->doc = Py_NewRef(doc);
    return self->spoken.name != nullptr;
}

void operation_dealloc(PyObject* object) {
    auto* self = reinterpret_cast<Operation*>(object);
    Py_XDECREF(self->row.flat);
    Py_XDECREF(self->spoken.name);
    Py_XDECREF(self->spoken.owner_name);
    Py_XDECREF(self->spoken.parameters);
    Py_XDECREF(self->package);
    Py_XDECREF(self->signature);
    Py_XDECREF(self->doc);
    Py_TYPE(object)->tp_free(object);
}

// Called by the class statement (or by the package, with None as the owner): the operation learns its name.
PyObject* operation_set_name(PyObject* object, PyObject* arguments) {
    auto* self = reinterpret_cast<Operation*>(object);
    PyObject *owner = nullptr, *name = nullptr;
    if (!PyArg_ParseTuple(arguments, "OU:__set_name__", &owner, &name))
        return nullptr;
    Py_XSETREF(self->spoken.name, Py_NewRef(name));
    if (PyType_Check(owner)) {
        PyObject* owner_name = PyObject_GetAttrString(owner, "__qualname__");
        PyObject* package = owner_name ? PyObject_GetAttrString(owner, "__module__") : nullptr;
        if (!package) {
            Py_XDECREF(owner_name);
            return nullptr;
        }
        Py_SETREF(self->spoken.owner_name, owner_name);
        Py_SETREF(self->package, package);
    } else {
        Py_SETREF(self->package, Py_NewRef(owner));
    }
    Py_RETURN_NONE;
}

namespace {

PyObject* qualified_name(PyObject* object, void*) {
    auto* self = reinterpret_cast<Operation*>(object);
    if (self->spoken.owner_name == Py_None)
        return Py_NewRef(self->spoken.name);
    return PyUnicode_FromFormat("%U.%U", self->spoken.owner_name, self->spoken.name);
}

PyObject* repr(PyObject* object) {
    PyObject* name = qualified_name(object, nullptr);
    if (!name)
        return nullptr;
    char const* type_name = Py_TYPE(object)->tp_name;
    PyObject* text = PyUnicode_FromFormat("<%s %S.%U>", type_name + sizeof("_hyx_proxy.") - 1,
                                          reinterpret_cast<Operation*>(object)->package, name);
    Py_DECREF(name);
    return text;
}

PyObject* call_operation(PyObject* callable, PyObject* const* arguments, size_t flags, PyObject* keyword_names) {
    auto const* self = reinterpret_cast<Operation*>(callable);
    Py_ssize_t const count = PyVectorcall_NARGS(flags);
    if (keyword_names) [[unlikely]]
        return recover(self->row, self->spoken, arguments, count, keyword_names);
    return self->row.call(self->spoken, arguments, count);
}

PyObject* make_operation(PyTypeObject* type, PyObject* arguments, PyObject* keywords) {
    static char const* const names[] = {"function", "signature", "doc", "parameters", nullptr};
    PyObject *flat = nullptr, *signature = Py_None, *doc = Py_None, *parameters = Py_None;
    if (!PyArg_ParseTupleAndKeywords(arguments, keywords, "O|OOO", const_cast<char**>(names), &flat, &signature, &doc,
                                     &parameters))
        return nullptr;
    auto* self = reinterpret_cast<Operation*>(type->tp_alloc(type, 0));
    if (!self)
        return nullptr;
    self->vectorcall = call_operation;
    if (!find_row(flat, self->row) || !set_texts(self, flat, signature, doc, parameters)) {
        Py_DECREF(self);
        return nullptr;
    }
    return reinterpret_cast<PyObject*>(self);
}

PyObject* bind_method(PyObject* descriptor, PyObject* object, PyObject*) {
    if (!object || object == Py_None)
        return Py_NewRef(descriptor);
    return PyMethod_New(descriptor, object);
}

// A function has `__get__` so that `inspect` and `help` take it for a routine; it stays itself.
PyObject* bind_nothing(PyObject* descriptor, PyObject*, PyObject*) {
    return Py_NewRef(descriptor);
}

PyTypeObject make_type(char const* name, char const* doc, descrgetfunc get, unsigned long flags) {
    PyTypeObject type = {PyVarObject_HEAD_INIT(nullptr, 0)};
    type.tp_name = name;
    type.tp_doc = doc;
    type.tp_basicsize = sizeof(Operation);
    type.tp_flags = Py_TPFLAGS_DEFAULT | Py_TPFLAGS_HAVE_VECTORCALL | flags;
    type.tp_vectorcall_offset = offsetof(Operation, vectorcall);
    type.tp_call = PyVectorcall_Call;
    type.tp_dealloc = operation_dealloc;
    type.tp_repr = repr;
    type.tp_new = make_operation;
    type.tp_descr_get = get;
    type.tp_members = operation_members;
    type.tp_getset = operation_getset;
    type.tp_methods = operation_methods;
    return type;
}

PyTypeObject method_type =
    make_type("_hyx_proxy.method", "A method of a native class.", bind_method, Py_TPFLAGS_METHOD_DESCRIPTOR);
PyTypeObject function_type = make_type("_hyx_proxy.function", "A native function.", bind_nothing, 0);

} // namespace

PyMemberDef operation_members[] = {
    {"__name__", T_OBJECT, offsetof(Operation, spoken) + offsetof(Spoken, name), READONLY, nullptr},
    {"__module__", T_OBJECT, offsetof(Operation, package), READONLY, nullptr},
    {"__doc__", T_OBJECT, offsetof(Operation, doc), READONLY, nullptr},
    {"__text_signature__", T_OBJECT, offsetof(Operation, signature), READONLY, nullptr},
    {"__wrapped_function__", T_OBJECT, offsetof(Operation, row) + offsetof(Row, flat), READONLY,
     "the extension module's own function"},
    {},
};

PyGetSetDef operation_getset[] = {
    {"__qualname__", qualified_name, nullptr, nullptr, nullptr},
    {},
};

PyMethodDef operation_methods[] = {
    {"__set_name__", operation_set_name, METH_VARARGS, nullptr},
    {},
};

bool add_operations(PyObject* module) {
    return PyModule_AddType(module, &method_type) == 0 && PyModule_AddType(module, &function_type) == 0;
}

} // namespace proxy
