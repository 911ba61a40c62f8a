// Converts objects to pointers and back, and moves ownership with them.
#include "binding/runtime/client_data.h"
#include "binding/runtime/pointer_constants.h"
#include "binding/runtime/reference.h"
#include "binding/runtime/this_lookup.h"
#include "binding/runtime/type_chain.h"

#include <cstring>

using runtime::Reference;

bool runtime::convert_handle(SwigPyObject* handle, swig_type_info* ty, void** ptr, int* newmemory) noexcept {
    if (!ty || handle->ty == ty) {
        if (ptr)
            *ptr = handle->ptr;
        return true;
    }
    if (!handle->ty)
        return false;
    swig_cast_info* cast = find_cast(handle->ty, ty);
    if (!cast)
        return false;
    if (ptr) {
        int ignored = 0;
        *ptr = SWIG_Python_ApplyCast(cast, handle->ptr, newmemory ? newmemory : &ignored);
    }
    return true;
}

int SWIG_Python_ConvertPtrAndOwn(PyObject* obj, void** ptr, swig_type_info* ty, PointerConversion how,
                                 int* own) noexcept {
    if (!obj)
        return SWIG_ERROR;
    if (obj == Py_None) {
        if (ptr)
            *ptr = nullptr;
        return how == PointerConversion::reference ? SWIG_NullReferenceError : SWIG_OK;
    }
    runtime::Views views(runtime::find_this(obj));
    if (own)
        *own = 0;
    int newmemory = 0;
    while (views.get() && !runtime::convert_handle(views.get(), ty, ptr, &newmemory))
        views.advance();
    SwigPyObject* const handle = views.get();
    if (!handle)
        return SWIG_ERROR;
    if (own)
        *own = newmemory | handle->own;
    if (how == PointerConversion::disowning)
        handle->own = 0;
    return SWIG_OK;
}

namespace {

int hexadecimal(char digit) noexcept {
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    return digit >= 'a' && digit <= 'f' ? digit - 'a' + 10 : -1;
}

// Reads the 8 bytes of a pointer in memory order; NULL when a digit is missing.
char const* decode_pointer(char const* text, void** pointer) noexcept {
    unsigned char bytes[sizeof(void*)];
    for (unsigned char& byte : bytes) {
        int const high = hexadecimal(text[0]);
        int const low = high < 0 ? -1 : hexadecimal(text[1]);
        if (low < 0)
            return nullptr;
        byte = static_cast<unsigned char>(high << 4 | low);
        text += 2;
    }
    std::memcpy(pointer, bytes, sizeof bytes);
    return text;
}

} // namespace

int SWIG_Python_ConvertFunctionPtr(PyObject* obj, void** ptr, swig_type_info* ty) noexcept {
    if (!obj || !PyCFunction_Check(obj))
        return SWIG_Python_ConvertPtrAndOwn(obj, ptr, ty);
    char const* doc = reinterpret_cast<PyCFunctionObject*>(obj)->m_ml->ml_doc;
    char const* description = doc ? std::strstr(doc, runtime::pointer_reference) : nullptr;
    if (!description || !ty)
        return SWIG_ERROR;
    description += sizeof runtime::pointer_reference - 1;
    void* pointer = nullptr;
    char const* type_name = ty->name;
    if (*description == '_')
        type_name = decode_pointer(description + 1, &pointer);
    else if (std::strcmp(description, "NULL") != 0)
        return SWIG_ERROR;
    swig_cast_info* cast = type_name ? SWIG_Python_FindCast(type_name, ty) : nullptr;
    if (!cast)
        return SWIG_ERROR;
    int newmemory = 0;
    *ptr = SWIG_Python_ApplyCast(cast, pointer, &newmemory);
    return SWIG_OK;
}

namespace {

// An object of a class whose instances are pointer objects themselves.
PyObject* new_typed_object(PyTypeObject* type, void* ptr, swig_type_info* ty, int own) noexcept {
    SwigPyObject* object = PyObject_New(SwigPyObject, type);
    if (!object) {
        PyErr_Clear();
        Py_RETURN_NONE;
    }
    object->ptr = ptr;
    object->ty = ty;
    object->own = own;
    object->mark = 0;
    object->next = nullptr;
    return reinterpret_cast<PyObject*>(object);
}

} // namespace

bool runtime::holds_lent(PyObject* object) noexcept {
    SwigPyObject* const handle = SWIG_Python_GetSwigThis(object);
    return handle && is_lent(reinterpret_cast<PyObject*>(handle));
}

void runtime::forget_deleted(PyObject* object, void const* pointer, swig_type_info* ty) noexcept {
    SwigPyObject* const first = SWIG_Python_GetSwigThis(object);
    for (Views views(first); views.get(); views.advance()) {
        void* viewed = nullptr;
        if (convert_handle(views.get(), ty, &viewed) && viewed == pointer)
            views.get()->ptr = nullptr;
    }
}

PyObject* SWIG_Python_NewPointerObj(void* ptr, swig_type_info* ty, PointerResult how) noexcept {
    if (!ptr)
        Py_RETURN_NONE;
    int const own = how != PointerResult::borrowed_proxied;
    auto* data = ty ? static_cast<SwigPyClientData*>(ty->clientdata) : nullptr;
    if (data && data->pytype)
        return new_typed_object(data->pytype, ptr, ty, own);
    Reference bare = Reference::take(SwigPyObject_Create(ptr, ty, own));
    if (!bare || !data || how == PointerResult::owned_bare)
        return bare.release();
    return SWIG_Python_NewShadowInstance(data, bare.get());
}
