// Makes native strings of Python's text, and frees them after the call.
#include "binding/vocabulary/conversions.h"

#include "binding/runtime/values.h"
#include "platform/hyx/values/string.h"

namespace vocabulary {

namespace {

int convert_std_string(PyObject* object, void** result) {
    std::string* text = nullptr;
    int const status = SWIG_AsPtr_std_string(object, &text);
    *result = text;
    return status;
}

void release_std_string(void* text) {
    delete static_cast<std::string*>(text);
}

// A str, or a wrapped char pointer; a null one stays a null pointer.
int convert_hyx_string(PyObject* object, void** result) {
    char* text = nullptr;
    std::size_t size = 0;
    *result = nullptr;
    int const status = SWIG_AsCharPtrAndSize(object, &text, &size, nullptr);
    if (status != SWIG_OK || !text)
        return status;
    *result = new hyx::String(std::string(text, size - 1));
    return SWIG_NEWOBJ;
}

void release_hyx_string(void* text) {
    delete static_cast<hyx::String*>(text);
}

} // namespace

Conversion const std_string_conversion = {convert_std_string, release_std_string};
Conversion const hyx_string_conversion = {convert_hyx_string, release_hyx_string};

} // namespace vocabulary
