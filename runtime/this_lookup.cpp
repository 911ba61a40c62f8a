// Finding the pointer object inside a Python object.
//
// What counts is an ordinary look-up of the attribute "this". Where that look-up has one fixed outcome for all
// instances of a type (a slot, or on 3.10 a key of the instance's dict), the road is remembered under the type's
// version tag, which the interpreter changes whenever the type or one of its bases does.
#include "runtime/pointers.h"
#include "runtime/reference.h"
#include "runtime/state.h"

#include <structmember.h>

#include <cstring>
#include <iterator>

namespace {

enum class Road : int {
    general,        // ask the object
    pointer_object, // the object is a sibling's pointer object
    slot,           // at a fixed offset of the instance
    dict,           // in the instance's dict
};

struct Route {
    PyTypeObject *type;
    unsigned int version;
    Road road;
    Py_ssize_t offset;
};

bool has_version(PyTypeObject *type) noexcept
{
#if PY_VERSION_HEX >= 0x030D0000
    return type->tp_version_tag != 0;
#else
    return PyType_HasFeature(type, Py_TPFLAGS_VALID_VERSION_TAG);
#endif
}

Route find_route(PyTypeObject *type) noexcept
{
    Route route{type, 0, Road::general, 0};
    if (std::strcmp(type->tp_name, pointer_object_type_name) == 0) {
        route.road = Road::pointer_object;
    } else if (type->tp_getattro == PyObject_GenericGetAttr) {
        PyObject *attribute = _PyType_Lookup(type, SWIG_This()); // borrowed; gives the type a version tag
        if (attribute && Py_IS_TYPE(attribute, &PyMemberDescr_Type)) {
            PyMemberDef const *member = reinterpret_cast<PyMemberDescrObject *>(attribute)->d_member;
            if (member->type == T_OBJECT_EX) {
                route.road = Road::slot;
                route.offset = member->offset;
            }
        }
#if PY_VERSION_HEX < 0x030B0000
        else if (!attribute && type->tp_dictoffset > 0) {
            route.road = Road::dict;
            route.offset = type->tp_dictoffset;
        }
#endif
    }
    route.version = has_version(type) ? type->tp_version_tag : 0;
    return route;
}

Route const &route_of(PyTypeObject *type) noexcept
{
    static Route routes[256];
    Route &route = routes[(reinterpret_cast<std::uintptr_t>(type) >> 5) % std::size(routes)];
    if (route.type != type || route.version == 0 || route.version != type->tp_version_tag || !has_version(type))
        route = find_route(type);
    return route;
}

PyObject *field(PyObject *object, Py_ssize_t offset) noexcept
{
    return *reinterpret_cast<PyObject **>(reinterpret_cast<char *>(object) + offset);
}

// Borrowed: the instance keeps its attribute alive.
PyObject *ask(PyObject *object) noexcept
{
    PyObject *value = nullptr;
#if PY_VERSION_HEX >= 0x030D0000
    int const found = PyObject_GetOptionalAttr(object, SWIG_This(), &value);
#else
    int const found = _PyObject_LookupAttr(object, SWIG_This(), &value);
#endif
    if (found < 0)
        PyErr_Clear();
    Py_XDECREF(value);
    return value;
}

PyObject *from_dict(PyObject *object, Py_ssize_t offset) noexcept
{
    PyObject *dict = field(object, offset);
    return dict ? PyDict_GetItemWithError(dict, SWIG_This()) : nullptr;
}

} // namespace

SwigPyObject *SWIG_Python_GetSwigThis(PyObject *object) noexcept
{
    PyTypeObject *const own_type = SwigPyObject_type();
    while (object) {
        PyTypeObject *type = Py_TYPE(object);
        if (type == own_type)
            break;
        Route const &route = route_of(type);
        if (route.road == Road::pointer_object)
            break;
        switch (route.road) {
        case Road::slot: object = field(object, route.offset); break;
        case Road::dict: object = from_dict(object, route.offset); break;
        default: object = ask(object); break;
        }
    }
    return reinterpret_cast<SwigPyObject *>(object);
}
