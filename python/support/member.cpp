// Data members: a property over a getter row and, unless the member is read only, a setter row.
#include "python/support/operation.h"

#include <structmember.h>

#include <cstddef>

namespace proxy {
namespace {

struct Member {
    PyObject_HEAD Row get;
    Row set;       // `set.flat` is null when the member is read only
    bool of_class; // a static member: the rows take no object
    Spoken spoken;
    PyObject* doc;
};

PyObject* make_member(PyTypeObject* type, PyObject* arguments, PyObject* keywords) {
    static char const* const names[] = {"get", "set", "doc", "of_class", nullptr};
    PyObject *get = nullptr, *set = Py_None, *doc = Py_None;
    int of_class = 0;
    if (!PyArg_ParseTupleAndKeywords(arguments, keywords, "O|OOp", const_cast<char**>(names), &get, &set, &doc,
                                     &of_class))
        return nullptr;
    auto* self = reinterpret_cast<Member*>(type->tp_alloc(type, 0));
    if (!self)
        return nullptr;
    self->of_class = of_class;
    self->doc = Py_NewRef(doc);
    self->spoken = {PyObject_GetAttrString(get, "__name__"), Py_NewRef(Py_None), Py_NewRef(Py_None),
                    Spoken::Kind::member, !of_class};
    if (!self->spoken.name || !find_row(get, self->get) || (set != Py_None && !find_row(set, self->set))) {
        Py_DECREF(self);
        return nullptr;
    }
    return reinterpret_cast<PyObject*>(self);
}

void dealloc(PyObject* object) {
    auto* self = reinterpret_cast<Member*>(object);
    Py_XDECREF(self->get.flat);
    Py_XDECREF(self->set.flat);
    Py_XDECREF(self->spoken.name);
    Py_XDECREF(self->spoken.owner_name);
    Py_XDECREF(self->spoken.parameters);
    Py_XDECREF(self->doc);
    Py_TYPE(object)->tp_free(object);
}

PyObject* get_member(PyObject* descriptor, PyObject* object, PyObject*) {
    auto* self = reinterpret_cast<Member*>(descriptor);
    if (self->of_class)
        return self->get.call(self->spoken, nullptr, 0);
    if (!object || object == Py_None)
        return Py_NewRef(descriptor);
    return self->get.call(self->spoken, &object, 1);
}

int set_member(PyObject* descriptor, PyObject* object, PyObject* value) {
    auto* self = reinterpret_cast<Member*>(descriptor);
    if (!value || !self->set.flat) {
        PyErr_Format(PyExc_AttributeError, "'%U' of '%s' objects cannot be %s", self->spoken.name,
                     Py_TYPE(object)->tp_name, value ? "set: it is read only" : "deleted");
        return -1;
    }
    PyObject* const arguments[] = {object, value};
    PyObject* result =
        self->of_class ? self->set.call(self->spoken, arguments + 1, 1) : self->set.call(self->spoken, arguments, 2);
    Py_XDECREF(result);
    return result ? 0 : -1;
}

PyObject* set_name(PyObject* object, PyObject* arguments) {
    PyObject *owner = nullptr, *name = nullptr;
    if (!PyArg_ParseTuple(arguments, "OU:__set_name__", &owner, &name))
        return nullptr;
    auto& spoken = reinterpret_cast<Member*>(object)->spoken;
    Py_SETREF(spoken.name, Py_NewRef(name));
    PyObject* const owner_name = PyObject_GetAttrString(owner, "__qualname__");
    if (!owner_name)
        return nullptr;
    Py_SETREF(spoken.owner_name, owner_name);
    Py_RETURN_NONE;
}

PyMemberDef members[] = {
    {"__name__", T_OBJECT, offsetof(Member, spoken) + offsetof(Spoken, name), READONLY, nullptr},
    {"__doc__", T_OBJECT, offsetof(Member, doc), READONLY, nullptr},
    {},
};

PyMethodDef methods[] = {
    {"__set_name__", set_name, METH_VARARGS, nullptr},
    {},
};

PyTypeObject make_type() {
    PyTypeObject type = {PyVarObject_HEAD_INIT(nullptr, 0)};
    type.tp_name = "_hyx_proxy.member";
    type.tp_doc = "A data member of a native class.";
    type.tp_basicsize = sizeof(Member);
    type.tp_flags = Py_TPFLAGS_DEFAULT;
    type.tp_dealloc = dealloc;
    type.tp_new = make_member;
    type.tp_descr_get = get_member;
    type.tp_descr_set = set_member;
    type.tp_members = members;
    type.tp_methods = methods;
    return type;
}

PyTypeObject member_type = make_type();

} // namespace

bool add_members(PyObject* module) {
    return PyModule_AddType(module, &member_type) == 0;
}

} // namespace proxy
