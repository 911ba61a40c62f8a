// The support module of the proxy packages: the types that proxy classes are made of, and `describe`.
#include "python/support/kept_state.h"
#include "python/support/operation.h"
#include "python/support/shown.h"

namespace {

PyObject* describe(PyObject*, PyObject* module) {
    vocabulary::ModuleDefinition const* definition = proxy::find_definition(module);
    return definition ? definition->records->describe() : nullptr;
}

// The destroy function of a class that has none of its own.
PyObject* release(PyObject*, PyObject* pointer) {
    proxy::release(pointer);
    Py_RETURN_NONE;
}

// Nothing to do for a proxy that holds nothing.
PyObject* let_go(PyObject*, PyObject* object) {
    if (!PyObject_TypeCheck(object, &proxy::handle_type))
        return PyErr_Format(PyExc_TypeError, "%R is no proxy", object);
    proxy::empty(reinterpret_cast<proxy::Handle*>(object));
    Py_RETURN_NONE;
}

bool sweep_with_garbage(PyObject* module) {
    PyObject* collector = PyImport_ImportModule("gc");
    PyObject* callbacks = collector ? PyObject_GetAttrString(collector, "callbacks") : nullptr;
    PyObject* sweep = callbacks ? PyObject_GetAttrString(module, "_sweep") : nullptr;
    bool const added = sweep && PyList_Append(callbacks, sweep) == 0;
    Py_XDECREF(sweep);
    Py_XDECREF(callbacks);
    Py_XDECREF(collector);
    return added;
}

PyMethodDef methods[] = {
    {"_sweep", proxy::sweep_kept, METH_VARARGS, nullptr},
    {"let_go", let_go, METH_O,
     "let_go(proxy, /)\n--\n\nTakes the native object from a proxy, as if that ended: the last proxy ends the object."},
    {"release", release, METH_O,
     "release(object, /)\n--\n\nThe destroy function of classes without one: drops the constructor's reference."},
    {"describe", describe, METH_O,
     "describe(module, /)\n--\n\nThe functions of an extension module of the family, with their forms, as a list of dicts."},
    {},
};

PyModuleDef definition = {
    PyModuleDef_HEAD_INIT,
    "_hyx_proxy",
    "What proxy classes are made of.",
    -1,
    methods,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
};

} // namespace

PyMODINIT_FUNC PyInit__hyx_proxy() {
    PyObject* module = PyModule_Create(&definition);
    if (module && !(proxy::add_errors(module) && proxy::add_operations(module) && proxy::add_members(module) &&
                    proxy::add_constructor(module) && proxy::add_handle(module))) {
        Py_DECREF(module);
        return nullptr;
    }
    if (module && !sweep_with_garbage(module))
        Py_CLEAR(module);
    return module;
}
