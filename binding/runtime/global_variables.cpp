// The type of the object whose attributes are native variables.
#include "binding/runtime/global_variables.h"

#include "binding/runtime/reference.h"
#include "binding/runtime/state.h"

#include <cstdlib>
#include <cstring>

using runtime::Reference;

namespace {

struct swig_globalvar {
    char* name; // heap copy
    swig_get_attr get_attr;
    swig_set_attr set_attr;
    swig_globalvar* next;
};

struct swig_varlinkobject {
    PyObject_HEAD swig_globalvar* vars; // newest first
};

swig_varlinkobject* as_link(PyObject* object) noexcept {
    return reinterpret_cast<swig_varlinkobject*>(object);
}

swig_globalvar* find_variable(PyObject* link, char const* name) noexcept {
    swig_globalvar* variable = as_link(link)->vars;
    while (variable && std::strcmp(variable->name, name) != 0)
        variable = variable->next;
    return variable;
}

void raise_unknown(char const* name) noexcept {
    if (!PyErr_Occurred())
        PyErr_Format(PyExc_AttributeError, "Unknown C global variable '%s'", name);
}

PyObject* swig_varlink_getattr(PyObject* link, char* name) noexcept {
    swig_globalvar* variable = find_variable(link, name);
    PyObject* value = variable ? variable->get_attr() : nullptr;
    if (!value)
        raise_unknown(name);
    return value;
}

// From 3.13 on only a negative result is a failed deletion.
constexpr int failure = PY_VERSION_HEX < 0x030D0000 ? 1 : -1;

int swig_varlink_setattr(PyObject* link, char* name, PyObject* value) noexcept {
    swig_globalvar* variable = find_variable(link, name);
    int const status = variable ? variable->set_attr(value) : 1;
    if (status != 1)
        return status;
    raise_unknown(name);
    return failure;
}

PyObject* swig_varlink_repr(PyObject*) noexcept {
    return PyUnicode_InternFromString("<Swig global variables>");
}

// text + part; NULL when either is missing.
Reference append(Reference text, char const* part) noexcept {
    Reference addition = Reference::take(PyUnicode_InternFromString(part));
    return text && addition ? Reference::take(PyUnicode_Concat(text.get(), addition.get())) : Reference();
}

PyObject* swig_varlink_str(PyObject* link) noexcept {
    Reference text = Reference::take(PyUnicode_InternFromString("("));
    for (swig_globalvar* variable = as_link(link)->vars; variable; variable = variable->next) {
        text = append(std::move(text), variable->name);
        if (variable->next)
            text = append(std::move(text), ", ");
    }
    return append(std::move(text), ")").release();
}

void swig_varlink_dealloc(PyObject* link) noexcept {
    for (swig_globalvar* variable = as_link(link)->vars; variable;) {
        swig_globalvar* next = variable->next;
        std::free(variable->name);
        std::free(variable);
        variable = next;
    }
    PyTypeObject* type = Py_TYPE(link);
    PyObject_Free(link);
    Py_DECREF(type);
}

PyType_Slot slots[] = {
    {Py_tp_dealloc, reinterpret_cast<void*>(swig_varlink_dealloc)},
    {Py_tp_repr, reinterpret_cast<void*>(swig_varlink_repr)},
    {Py_tp_getattr, reinterpret_cast<void*>(swig_varlink_getattr)},
    {Py_tp_setattr, reinterpret_cast<void*>(swig_varlink_setattr)},
    {Py_tp_str, reinterpret_cast<void*>(swig_varlink_str)},
    {Py_tp_doc, const_cast<char*>("Swig var link object")},
    {0, nullptr},
};

PyType_Spec spec = {"swig_runtime_data4.swigvarlink", sizeof(swig_varlinkobject), 0, Py_TPFLAGS_DEFAULT, slots};

PyObject* new_link() noexcept {
    static PyTypeObject* const type = reinterpret_cast<PyTypeObject*>(PyType_FromSpec(&spec));
    swig_varlinkobject* link = type ? PyObject_New(swig_varlinkobject, type) : nullptr;
    if (link)
        link->vars = nullptr;
    return reinterpret_cast<PyObject*>(link);
}

} // namespace

void SWIG_Python_SetConstant(PyObject* dict, char const* name, PyObject* value) noexcept {
    PyDict_SetItemString(dict, name, value);
    Py_XDECREF(value);
}

PyObject* SWIG_Python_Globals() noexcept {
    if (!Swig_Globals_global)
        Swig_Globals_global = new_link();
    return Swig_Globals_global;
}

void SWIG_Python_addvarlink(PyObject* link, char const* name, swig_get_attr get_attr, swig_set_attr set_attr) noexcept {
    auto* variable = static_cast<swig_globalvar*>(std::malloc(sizeof(swig_globalvar)));
    char* copy = variable ? static_cast<char*>(std::malloc(std::strlen(name) + 1)) : nullptr;
    if (!copy) {
        std::free(variable);
        return;
    }
    std::strcpy(copy, name);
    *variable = {copy, get_attr, set_attr, as_link(link)->vars};
    as_link(link)->vars = variable;
}
