// The remembered roads to the pointer objects of instances, and the look-up that takes them.
#pragma once

#include "runtime/pointer_object.h"
#include "runtime/pointers.h"

#include <Python.h>

#include <cstdint>
#include <iterator>

namespace runtime {

enum class Road : int {
    general,        // ask the object
    pointer_object, // the object is a pointer object, this module's or a sibling's; such types live for ever
    slot,           // at a fixed offset of the instance
    dict,           // in the instance's dict
};

struct Route {
    PyTypeObject *type;
    unsigned int version; // of the type when the route was found; 0 for types without one
    Road road;
    Py_ssize_t offset;
};

inline Route this_routes[256]; // by type; later types displace earlier ones

inline bool has_version(PyTypeObject *type) noexcept
{
#if PY_VERSION_HEX >= 0x030D0000
    return type->tp_version_tag != 0;
#else
    return PyType_HasFeature(type, Py_TPFLAGS_VALID_VERSION_TAG);
#endif
}

inline Route &route_place(PyTypeObject *type) noexcept
{
    return this_routes[(reinterpret_cast<std::uintptr_t>(type) >> 5) % std::size(this_routes)];
}

inline bool is_valid(Route const &route, PyTypeObject *type) noexcept
{
    return route.type == type && (route.road == Road::pointer_object ||
                                  (route.version != 0 && route.version == type->tp_version_tag && has_version(type)));
}

inline PyObject *field(PyObject *object, Py_ssize_t offset) noexcept
{
    return *reinterpret_cast<PyObject **>(reinterpret_cast<char *>(object) + offset);
}

// SWIG_Python_GetSwigThis, with the usual road of a proxy instance taken on the spot.
inline SwigPyObject *find_this(PyObject *object) noexcept
{
    PyTypeObject *type = Py_TYPE(object);
    Route const &route = route_place(type);
    if (route.road == Road::slot && is_valid(route, type)) [[likely]] {
        PyObject *held = field(object, route.offset);
        Route const &end = held ? route_place(Py_TYPE(held)) : route;
        if (end.road == Road::pointer_object && end.type == Py_TYPE(held)) [[likely]]
            return reinterpret_cast<SwigPyObject *>(held);
    }
    return SWIG_Python_GetSwigThis(object);
}

} // namespace runtime
