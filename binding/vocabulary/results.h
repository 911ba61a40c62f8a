// From native results to Python objects.
#pragma once

#include "binding/runtime/pointers.h"
#include "binding/runtime/values.h"
#include "binding/vocabulary/native_types.h"
#include "binding/vocabulary/policies.h"
#include "binding/vocabulary/record.h"

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace hyx {
class String;
} // namespace hyx

namespace vocabulary {

// Decoded strictly: undecodable bytes are an error.
PyObject* from_hyx_string(std::string const& text) noexcept;
// A tuple of str.
PyObject* from_strings(std::vector<std::string> const& texts) noexcept;

inline Shower shower;

// The object behind a pointer as the call with these arguments wants it; NULL where it wants nothing special.
inline PyObject* show(void const* object, swig_type_info* type, PyObject* const* arguments) {
    bool const wanted = object && arguments && shower.arguments == arguments;
    return wanted ? shower.show(const_cast<void*>(object), type) : nullptr;
}

template <class T>
PyObject* from_pointer(T* pointer, PointerResult how) noexcept {
    using Object = std::remove_cv_t<T>;
    return SWIG_Python_NewPointerObj(const_cast<Object*>(pointer), descriptor<Object>(), how);
}

template <class T>
PyObject* from_scalar(T value) noexcept {
    if constexpr (std::is_same_v<T, bool>)
        return Py_NewRef(value ? Py_True : Py_False);
    else if constexpr (std::is_floating_point_v<T>)
        return PyFloat_FromDouble(value);
    else if constexpr (std::is_enum_v<T> || std::is_signed_v<T>)
        return PyLong_FromLong(static_cast<long>(value));
    else
        return SWIG_From_unsigned_SS_long(value);
}

// A class result: text becomes str, anything else a new object that Python owns.
template <class T>
PyObject* from_object(T&& value) {
    using Object = std::remove_cvref_t<T>;
    if constexpr (std::is_same_v<Object, hyx::String>)
        return from_hyx_string(value);
    else if constexpr (std::is_same_v<Object, std::string>)
        return SWIG_FromCharPtrAndSize(value.data(), value.size());
    else if constexpr (std::is_same_v<Object, std::vector<std::string>>)
        return from_strings(value);
    else {
        auto* object = new Object(std::forward<T>(value));
        ReferencePolicy<Object>::take(object);
        return from_pointer(object, PointerResult::owned_proxied);
    }
}

template <class T>
inline constexpr bool is_text_class =
    std::is_same_v<std::remove_cvref_t<T>, std::string> || std::is_same_v<std::remove_cvref_t<T>, hyx::String>;

// A Python object that keeps a reference-counted native object alive. It is made as an owner: ownership that is set
// later would give back a hold on the type table that was never taken.
template <class T>
PyObject* to_shared(T* object) {
    using Object = std::remove_cv_t<T>;
    static_assert(std::is_base_of_v<osg::Referenced, Object> || std::is_base_of_v<hyx::Referenced, Object>,
                  "only what counts references can be shared");
    if (object)
        ReferencePolicy<Object>::take(const_cast<Object*>(object));
    return from_pointer(object, PointerResult::owned_proxied);
}

// Marks a result that lies inside of another native object.
inline void lend_result(PyObject* result) noexcept {
    if (SwigPyObject* handle = result ? SWIG_Python_GetSwigThis(result) : nullptr)
        runtime::lend(reinterpret_cast<PyObject*>(handle));
}

// Who keeps the native object behind a pointer or reference result alive.
enum class Hold {
    borrowed, // somebody else
    owned,    // its Python object, which it was made for
    shared,   // its Python object too, with one more reference
};

template <class T>
PyObject* from_borrowed(T* pointer, PointerResult how, PyObject* const* arguments) {
    if (how == PointerResult::borrowed_proxied)
        if (PyObject* const shown = show(pointer, descriptor<std::remove_cv_t<T>>(), arguments))
            return shown;
    return from_pointer(pointer, how);
}

// The Python object for a native result of declared type R of the call with these arguments.
template <class R, Hold How>
PyObject* from_result(R result, PyObject* const* arguments) {
    constexpr PointerResult how =
        How == Hold::borrowed ? PointerResult::borrowed_proxied : PointerResult::owned_proxied;
    using Plain = std::remove_cvref_t<R>;
    if constexpr (std::is_same_v<Plain, PyObject*>)
        return result;
    else if constexpr (std::is_same_v<Plain, char*> || std::is_same_v<Plain, char const*>)
        return SWIG_FromCharPtr(result);
    else if constexpr (How == Hold::shared) {
        PyObject* const shown = show(result, descriptor<std::remove_cv_t<std::remove_pointer_t<Plain>>>(), arguments);
        return shown ? shown : to_shared(result);
    } else if constexpr (std::is_pointer_v<Plain>) {
        if constexpr (std::is_function_v<std::remove_pointer_t<Plain>>)
            return SWIG_Python_NewPointerObj(reinterpret_cast<void*>(result),
                                             descriptor<std::remove_pointer_t<Plain>>(), how);
        else
            return from_borrowed(result, how, arguments);
    } else if constexpr (std::is_arithmetic_v<Plain> || std::is_enum_v<Plain>)
        return from_scalar(static_cast<Plain>(result));
    else if constexpr (std::is_lvalue_reference_v<R> && !is_text_class<R>) {
        PyObject* object = from_borrowed(&result, how, arguments);
        // A value behind a reference is some object's member; what counts references may be anyone's.
        if constexpr (How == Hold::borrowed && !std::is_base_of_v<osg::Referenced, Plain> &&
                      !std::is_base_of_v<hyx::Referenced, Plain>)
            lend_result(object);
        return object;
    } else
        return from_object(std::forward<R>(result));
}

} // namespace vocabulary
