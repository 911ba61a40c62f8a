// Flat functions as one would write them by hand: the same conventions, checks and messages as the rows.
#include "binding/runtime/errors.h"
#include "binding/runtime/pointers.h"
#include "binding/runtime/type_chain.h"
#include "platform/hyx/values/vec3.h"
#include "platform/hyxOSG/nodes/geometry_node.h"
#include "platform/hyxOSG/nodes/transform.h"

#include <exception>

namespace {

swig_type_info* node_type;
swig_type_info* transform_type;
swig_type_info* vec3_type;

PyObject* getAutoRemove(PyObject*, PyObject* argument) {
    void* self = nullptr;
    int const status = SWIG_Python_ConvertPtrAndOwn(argument, &self, node_type);
    if (status != SWIG_OK) {
        runtime::raise_argument_error(
            status, "in method 'GeometryNode_getAutoRemove', argument 1 of type 'hyxOSG::GeometryNode const *'");
        return nullptr;
    }
    bool result = false;
    try {
        result = static_cast<hyxOSG::GeometryNode const*>(self)->getAutoRemove();
    } catch (std::exception const& error) {
        PyErr_SetString(PyExc_RuntimeError, error.what());
        return nullptr;
    }
    return PyBool_FromLong(result);
}

PyObject* setAutoRemove(PyObject*, PyObject* arguments) {
    PyObject* slots[2];
    if (!SWIG_Python_UnpackTuple(arguments, "GeometryNode_setAutoRemove", 2, 2, slots))
        return nullptr;
    void* self = nullptr;
    int const status = SWIG_Python_ConvertPtrAndOwn(slots[0], &self, node_type);
    if (status != SWIG_OK) {
        runtime::raise_argument_error(
            status, "in method 'GeometryNode_setAutoRemove', argument 1 of type 'hyxOSG::GeometryNode *'");
        return nullptr;
    }
    int const value = PyBool_Check(slots[1]) ? PyObject_IsTrue(slots[1]) : -1;
    if (value < 0) {
        PyErr_SetString(PyExc_TypeError, "in method 'GeometryNode_setAutoRemove', argument 2 of type 'bool'");
        return nullptr;
    }
    try {
        static_cast<hyxOSG::GeometryNode*>(self)->setAutoRemove(value);
    } catch (std::exception const& error) {
        PyErr_SetString(PyExc_RuntimeError, error.what());
        return nullptr;
    }
    Py_RETURN_NONE;
}

PyObject* setTranslate(PyObject*, PyObject* arguments) {
    PyObject* slots[2];
    if (!SWIG_Python_UnpackTuple(arguments, "Transform_setTranslate", 2, 2, slots))
        return nullptr;
    void* self = nullptr;
    void* value = nullptr;
    int status = SWIG_Python_ConvertPtrAndOwn(slots[0], &self, transform_type);
    if (status != SWIG_OK) {
        runtime::raise_argument_error(status,
                                      "in method 'Transform_setTranslate', argument 1 of type 'hyxOSG::Transform *'");
        return nullptr;
    }
    status = SWIG_Python_ConvertPtrAndOwn(slots[1], &value, vec3_type);
    if (status != SWIG_OK) {
        runtime::raise_argument_error(status,
                                      "in method 'Transform_setTranslate', argument 2 of type 'hyx::Vec3 const &'");
        return nullptr;
    }
    if (!value) {
        PyErr_SetString(
            PyExc_TypeError,
            "invalid null reference in method 'Transform_setTranslate', argument 2 of type 'hyx::Vec3 const &'");
        return nullptr;
    }
    try {
        static_cast<hyxOSG::Transform*>(self)->setTranslate(*static_cast<hyx::Vec3 const*>(value));
    } catch (std::exception const& error) {
        PyErr_SetString(PyExc_RuntimeError, error.what());
        return nullptr;
    }
    Py_RETURN_NONE;
}

PyMethodDef methods[] = {
    {"GeometryNode_getAutoRemove", getAutoRemove, METH_O, nullptr},
    {"GeometryNode_setAutoRemove", setAutoRemove, METH_VARARGS, nullptr},
    {"Transform_setTranslate", setTranslate, METH_VARARGS, nullptr},
    {nullptr, nullptr, 0, nullptr},
};
PyModuleDef definition = {
    PyModuleDef_HEAD_INIT, "hand_written", nullptr, -1, methods, nullptr, nullptr, nullptr, nullptr};

} // namespace

// Import _hyxOSG first: its descriptors are used.
PyMODINIT_FUNC PyInit_hand_written() {
    PyObject* module = PyModule_Create(&definition);
    node_type = SWIG_Python_TypeQuery("hyxOSG::GeometryNode *");
    transform_type = SWIG_Python_TypeQuery("hyxOSG::Transform *");
    vec3_type = SWIG_Python_TypeQuery("hyx::Vec3 *");
    return module;
}
