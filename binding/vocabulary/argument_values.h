// The conversion of one argument by its parameter's kind.
#pragma once

#include "binding/runtime/pointers.h"
#include "binding/runtime/this_lookup.h"
#include "binding/runtime/values.h"
#include "binding/vocabulary/native_types.h"
#include "binding/vocabulary/record.h"

#include <climits>

namespace vocabulary {

// The first of a handle's views that is, or is cast to, the type.
inline int convert_handles(SwigPyObject* handle, swig_type_info* type, void** result) noexcept {
    for (runtime::Views views(handle); views.get(); views.advance())
        if (runtime::convert_handle(views.get(), type, result))
            return SWIG_OK;
    return SWIG_ERROR;
}

inline int convert_pointer(PyObject* object, swig_type_info* type, void** result) noexcept {
    if (object == Py_None) {
        *result = nullptr;
        return SWIG_OK;
    }
    SwigPyObject* handle = runtime::find_this(object);
    if (handle && handle->ty == type) {
        *result = handle->ptr;
        return SWIG_OK;
    }
    return convert_handles(handle, type, result);
}

inline int convert_int32(PyObject* object, Slot& slot) noexcept {
    int const status = SWIG_AsVal_long(object, &slot.integer);
    return status == SWIG_OK && (slot.integer < INT_MIN || slot.integer > INT_MAX) ? int(SWIG_OverflowError) : status;
}

inline int convert_uint32(PyObject* object, Slot& slot) noexcept {
    int const status = SWIG_AsVal_unsigned_SS_long(object, &slot.natural);
    return status == SWIG_OK && slot.natural > UINT_MAX ? int(SWIG_OverflowError) : status;
}

// For who deletes the native object. Another call that has not ended may use it.
inline int convert_disowned(PyObject* object, swig_type_info* type, void** result) noexcept {
    *result = nullptr;
    if (object == Py_None)
        return SWIG_OK;
    SwigPyObject* const handle = runtime::find_this(object);
    if (!handle)
        return SWIG_ERROR;
    if (runtime::is_used(handle)) {
        PyErr_SetString(PyExc_RuntimeError, "the object is used by a call that has not ended and cannot be deleted");
        return SWIG_UserError;
    }
    return SWIG_Python_ConvertPtrAndOwn(reinterpret_cast<PyObject*>(handle), result, type,
                                        PointerConversion::disowning);
}

inline int convert_text(PyObject* object, Slot& slot) noexcept {
    char* text = nullptr;
    int const status = SWIG_AsCharPtrAndSize(object, &text, nullptr, nullptr);
    slot.pointer = text;
    return status;
}

// A status code; the slot holds the value on success.
inline int convert_value(Parameter const& parameter, PyObject* object, Slot& slot) {
    if (parameter.kind == Kind::boolean && PyBool_Check(object)) {
        slot.flag = object == Py_True;
        return SWIG_OK;
    }
    switch (parameter.kind) {
    case Kind::boolean:
        return SWIG_AsVal_bool(object, &slot.flag);
    case Kind::int32:
        return convert_int32(object, slot);
    case Kind::int64:
        return SWIG_AsVal_long(object, &slot.integer);
    case Kind::uint32:
        return convert_uint32(object, slot);
    case Kind::uint64:
        return SWIG_AsVal_unsigned_SS_long(object, &slot.natural);
    case Kind::real:
        return SWIG_AsVal_double(object, &slot.real);
    case Kind::single:
        return SWIG_AsVal_float(object, &slot.single);
    case Kind::text:
        return convert_text(object, slot);
    case Kind::converted:
        return parameter.conversion->convert(object, &slot.pointer);
    case Kind::slice:
        slot.object = object;
        return PySlice_Check(object) ? SWIG_OK : SWIG_TypeError;
    case Kind::object:
        slot.object = object;
        return SWIG_OK;
    case Kind::function:
        return SWIG_Python_ConvertFunctionPtr(object, &slot.pointer, swig_types[parameter.type]);
    case Kind::untyped:
        return SWIG_Python_ConvertPtrAndOwn(object, &slot.pointer, nullptr);
    case Kind::disowned:
        return convert_disowned(object, swig_types[parameter.type], &slot.pointer);
    case Kind::pointer:
        break;
    }
    return convert_pointer(object, swig_types[parameter.type], &slot.pointer);
}

} // namespace vocabulary
