// Finding the pointer object inside a Python object.
//
// What counts is an ordinary look-up of the attribute "this". Where that look-up has one fixed outcome for all
// instances of a type (a slot, or on 3.10 a key of the instance's dict), the road is remembered under the type's
// version tag, which the interpreter changes whenever the type or one of its bases does.
#include "binding/runtime/this_lookup.h"

#include "binding/runtime/errors.h"
#include "binding/runtime/reference.h"
#include "binding/runtime/state.h"
#include "binding/runtime/user_code.h"

#include <structmember.h>

#include <iterator>
#include <utility>

namespace {

using namespace runtime;

bool has_dict(PyTypeObject* type) noexcept {
#ifdef Py_TPFLAGS_MANAGED_DICT
    if (PyType_HasFeature(type, Py_TPFLAGS_MANAGED_DICT))
        return true;
#endif
    return type->tp_dictoffset != 0;
}

Route find_route(PyTypeObject* type) noexcept {
    Route route{type, 0, Road::general, 0};
    if (is_pointer_type(type)) {
        route.road = Road::pointer_object;
    } else if (type->tp_getattro == PyObject_GenericGetAttr) {
        PyObject* attribute = _PyType_Lookup(type, SWIG_This()); // borrowed; gives the type a version tag
        if (attribute && Py_IS_TYPE(attribute, &PyMemberDescr_Type)) {
            PyMemberDef const* member = reinterpret_cast<PyMemberDescrObject*>(attribute)->d_member;
            // A class may bear the descriptor of another one, whose slots its instances lack.
            if (member->type == T_OBJECT_EX && PyType_IsSubtype(type, PyDescr_TYPE(attribute))) {
                route.road = Road::slot;
                route.offset = member->offset;
            }
        } else if (!attribute && !has_dict(type)) {
            route.road = Road::nowhere;
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

Route const& route_of(PyTypeObject* type) noexcept {
    Route& route = route_place(type);
    if (!is_valid(route, type))
        route = find_route(type);
    return route;
}

// What is computed anew at each look-up has no other holder: the latest are kept here until their call is over.
PyObject* parked[64];
std::size_t parking_place = 0;

// Borrowed: the instance keeps its attribute alive.
PyObject* ask(PyObject* object) noexcept {
    PyObject* value = nullptr;
    int const found = run_user_code([&] {
#if PY_VERSION_HEX >= 0x030D0000
        return PyObject_GetOptionalAttr(object, SWIG_This(), &value);
#else
        return _PyObject_LookupAttr(object, SWIG_This(), &value);
#endif
    });
    if (found < 0)
        clear_error();
    if (value && Py_REFCNT(value) == 1)
        Py_XDECREF(std::exchange(parked[parking_place++ % std::size(parked)], value));
    else
        Py_XDECREF(value);
    return value;
}

PyObject* from_dict(PyObject* object, Py_ssize_t offset) noexcept {
    PyObject* dict = field(object, offset);
    return dict ? PyDict_GetItemWithError(dict, SWIG_This()) : nullptr;
}

// Attributes "this" that lead to further ones, perhaps in a ring, are not followed longer than this.
constexpr int longest_way = 1000;

SwigPyObject* follow(PyObject* object, bool may_ask) noexcept {
    for (int steps = 0; object; ++steps) {
        Route const& route = route_of(Py_TYPE(object));
        if (route.road == Road::pointer_object)
            break;
        if (steps == longest_way)
            return nullptr;
        switch (route.road) {
        case Road::slot:
            object = field(object, route.offset);
            break;
        case Road::dict:
            object = from_dict(object, route.offset);
            break;
        case Road::nowhere:
            return nullptr;
        default:
            object = may_ask ? ask(object) : nullptr;
            break;
        }
    }
    return reinterpret_cast<SwigPyObject*>(object);
}

} // namespace

SwigPyObject* SWIG_Python_GetSwigThis(PyObject* object) noexcept {
    return follow(object, true);
}

SwigPyObject* runtime::find_kept_this(PyObject* object) noexcept {
    return follow(object, false);
}
