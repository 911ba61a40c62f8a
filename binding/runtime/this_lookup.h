// The remembered roads to the pointer objects of instances, and the look-up that takes them.
#pragma once

#include "binding/runtime/pointer_object.h"
#include "binding/runtime/pointers.h"

#include <Python.h>

#include <cstdint>
#include <iterator>

namespace runtime {

enum class Road : int {
    general,        // ask the object
    nowhere,        // instances have no such attribute and no dict to get one: numbers, text
    pointer_object, // the object is a pointer object, this module's or a sibling's; such types live for ever
    slot,           // at a fixed offset of the instance
    dict,           // in the instance's dict
};

struct Route {
    PyTypeObject* type;
    unsigned int version; // of the type when the route was found; 0 for types without one
    Road road;
    Py_ssize_t offset;
};

inline Route this_routes[256]; // by type; later types displace earlier ones

inline bool has_version(PyTypeObject* type) noexcept {
#if PY_VERSION_HEX >= 0x030D0000
    return type->tp_version_tag != 0;
#else
    return PyType_HasFeature(type, Py_TPFLAGS_VALID_VERSION_TAG);
#endif
}

inline Route& route_place(PyTypeObject* type) noexcept {
    return this_routes[(reinterpret_cast<std::uintptr_t>(type) >> 5) % std::size(this_routes)];
}

inline bool is_valid(Route const& route, PyTypeObject* type) noexcept {
    return route.type == type && (route.road == Road::pointer_object ||
                                  (route.version != 0 && route.version == type->tp_version_tag && has_version(type)));
}

inline PyObject* field(PyObject* object, Py_ssize_t offset) noexcept {
    return *reinterpret_cast<PyObject**>(reinterpret_cast<char*>(object) + offset);
}

inline bool is_known_pointer_object(PyObject* object) noexcept {
    Route const& route = route_place(Py_TYPE(object));
    return route.road == Road::pointer_object && route.type == Py_TYPE(object);
}

// The pointer object when it is at one of the two usual places: the object itself, or a slot of a proxy instance whose
// type has been met before. NULL otherwise; that says nothing about the object.
inline SwigPyObject* find_this_at_once(PyObject* object) noexcept {
    Route const& route = route_place(Py_TYPE(object));
    if (!is_valid(route, Py_TYPE(object)))
        return nullptr;
    if (route.road == Road::slot) [[likely]]
        object = field(object, route.offset);
    else if (route.road != Road::pointer_object)
        return nullptr;
    return object && is_known_pointer_object(object) ? reinterpret_cast<SwigPyObject*>(object) : nullptr;
}

// SWIG_Python_GetSwigThis, with the usual roads taken on the spot.
inline SwigPyObject* find_this(PyObject* object) noexcept {
    SwigPyObject* const handle = find_this_at_once(object);
    return handle ? handle : SWIG_Python_GetSwigThis(object);
}

// The pointer object that an object keeps, found without running code of the user; NULL where that would be needed.
SwigPyObject* find_kept_this(PyObject* object) noexcept;

} // namespace runtime
