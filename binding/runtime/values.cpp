// Converts numbers, booleans and text, strictly.
#include "binding/runtime/values.h"

#include "binding/runtime/pointers.h"
#include "binding/runtime/type_chain.h"

#include <cfloat>
#include <climits>
#include <cstring>

namespace {

// True when the interpreter's conversion of an int went well; its error is cleared otherwise.
template <class Value>
bool converted(Value result) noexcept {
    if (result != Value(-1) || !PyErr_Occurred())
        return true;
    PyErr_Clear();
    return false;
}

// The descriptor of wrapped characters. Found once; a failed search is no answer for good.
swig_type_info* char_pointer_type() noexcept {
    static swig_type_info* type = nullptr;
    if (!type)
        type = runtime::known_type("_p_char");
    return type;
}

swig_type_info* string_type() noexcept {
    static swig_type_info* type = nullptr;
    if (!type)
        type = runtime::known_type("std::string *");
    return type;
}

// A wrapped char pointer; SWIG_TypeError when obj holds none.
int as_char_pointer(PyObject* obj, char** text) noexcept {
    swig_type_info* type = char_pointer_type();
    void* pointer = nullptr;
    if (!type || SWIG_Python_ConvertPtrAndOwn(obj, &pointer, type) != SWIG_OK)
        return SWIG_TypeError;
    *text = static_cast<char*>(pointer);
    return SWIG_OK;
}

int new_string(char const* text, std::size_t size, std::string** val) noexcept {
    if (val)
        *val = new std::string(text, size);
    return SWIG_NEWOBJ;
}

} // namespace

int SWIG_AsVal_long(PyObject* obj, long* val) noexcept {
    if (!PyLong_Check(obj))
        return SWIG_TypeError;
    long const value = PyLong_AsLong(obj);
    if (!converted(value))
        return SWIG_OverflowError;
    if (val)
        *val = value;
    return SWIG_OK;
}

int SWIG_AsVal_unsigned_SS_long(PyObject* obj, unsigned long* val) noexcept {
    if (!PyLong_Check(obj))
        return SWIG_TypeError;
    unsigned long const value = PyLong_AsUnsignedLong(obj);
    if (!converted(value))
        return SWIG_OverflowError;
    if (val)
        *val = value;
    return SWIG_OK;
}

int SWIG_AsVal_double(PyObject* obj, double* val) noexcept {
    double value = 0;
    if (PyFloat_Check(obj)) {
        value = PyFloat_AS_DOUBLE(obj);
    } else {
        if (!PyLong_Check(obj))
            return SWIG_TypeError;
        value = PyLong_AsDouble(obj);
        if (!converted(value))
            return SWIG_TypeError;
    }
    if (val)
        *val = value;
    return SWIG_OK;
}

int SWIG_AsVal_float(PyObject* obj, float* val) noexcept {
    double value = 0;
    int const status = SWIG_AsVal_double(obj, &value);
    if (status != SWIG_OK)
        return status;
    if ((value < -FLT_MAX || value > FLT_MAX) && value >= -DBL_MAX && value <= DBL_MAX)
        return SWIG_OverflowError;
    if (val)
        *val = static_cast<float>(value);
    return SWIG_OK;
}

int SWIG_AsVal_bool(PyObject* obj, bool* val) noexcept {
    if (!PyBool_Check(obj))
        return SWIG_TypeError;
    if (val)
        *val = obj == Py_True;
    return SWIG_OK;
}

int SWIG_AsCharPtrAndSize(PyObject* obj, char** cptr, std::size_t* psize, int* alloc) noexcept {
    if (alloc)
        *alloc = 0;
    if (PyUnicode_Check(obj)) {
        Py_ssize_t size = 0;
        char const* text = PyUnicode_AsUTF8AndSize(obj, &size);
        if (!text)
            return SWIG_TypeError;
        if (cptr)
            *cptr = const_cast<char*>(text);
        if (psize)
            *psize = static_cast<std::size_t>(size) + 1;
        return SWIG_OK;
    }
    char* text = nullptr;
    if (int const status = as_char_pointer(obj, &text))
        return status;
    if (cptr)
        *cptr = text;
    if (psize)
        *psize = text ? std::strlen(text) + 1 : 0;
    return SWIG_OK;
}

int SWIG_AsPtr_std_string(PyObject* obj, std::string** val) noexcept {
    if (PyUnicode_Check(obj)) {
        Py_ssize_t size = 0;
        char const* text = PyUnicode_AsUTF8AndSize(obj, &size);
        return text ? new_string(text, static_cast<std::size_t>(size), val) : int(SWIG_TypeError);
    }
    char* text = nullptr;
    if (as_char_pointer(obj, &text) == SWIG_OK) {
        if (text)
            return new_string(text, std::strlen(text), val);
        if (val)
            *val = nullptr;
        return SWIG_OK;
    }
    swig_type_info* const type = string_type();
    if (!type)
        return SWIG_ERROR;
    void* pointer = nullptr;
    int const status = SWIG_Python_ConvertPtrAndOwn(obj, &pointer, type);
    if (status == SWIG_OK && val)
        *val = static_cast<std::string*>(pointer);
    return status;
}

PyObject* SWIG_FromCharPtrAndSize(char const* text, std::size_t size) noexcept {
    if (!text)
        Py_RETURN_NONE;
    if (size <= INT_MAX)
        return PyUnicode_DecodeUTF8(text, static_cast<Py_ssize_t>(size), "surrogateescape");
    swig_type_info* type = char_pointer_type();
    if (!type)
        Py_RETURN_NONE;
    return SWIG_Python_NewPointerObj(const_cast<char*>(text), type, PointerResult::borrowed_proxied);
}

PyObject* SWIG_FromCharPtr(char const* text) noexcept {
    return SWIG_FromCharPtrAndSize(text, text ? std::strlen(text) : 0);
}

PyObject* SWIG_From_unsigned_SS_long(unsigned long value) noexcept {
    return value > LONG_MAX ? PyLong_FromUnsignedLong(value) : PyLong_FromLong(static_cast<long>(value));
}
