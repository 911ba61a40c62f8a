// Makes native strings of Python's text, and frees them after the call.
#include "binding/vocabulary/conversions.h"

#include "binding/runtime/values.h"
#include "platform/hyx/values/string.h"

#include <iterator>

namespace vocabulary {

namespace {

// Strings that calls have given back, for the next ones: most texts then need no memory of their own. Only for whoever
// holds the interpreter's lock.
class SpareStrings {
public:
    std::string* take(char const* text, std::size_t size) {
        if (count_ == 0)
            return new std::string(text, size);
        std::string* const string = strings_[--count_];
        string->assign(text, size);
        return string;
    }

    void give(std::string* string) {
        constexpr std::size_t most_kept = 256; // letters
        if (count_ == std::size(strings_) || string->capacity() > most_kept)
            delete string;
        else
            strings_[count_++] = string;
    }

private:
    std::string* strings_[8];
    std::size_t count_ = 0;
};

SpareStrings spare_strings;

} // namespace

int convert_std_string(PyObject* object, void** result) {
    if (PyUnicode_Check(object)) {
        bool const plain = PyUnicode_IS_COMPACT_ASCII(object); // and so its own UTF-8
        Py_ssize_t size = plain ? PyUnicode_GET_LENGTH(object) : 0;
        char const* const letters = plain ? reinterpret_cast<char const*>(PyUnicode_1BYTE_DATA(object))
                                          : PyUnicode_AsUTF8AndSize(object, &size);
        if (!letters)
            return SWIG_TypeError;
        *result = spare_strings.take(letters, static_cast<std::size_t>(size));
        return SWIG_NEWOBJ;
    }
    std::string* text = nullptr;
    int const status = SWIG_AsPtr_std_string(object, &text);
    *result = text;
    return status;
}

void release_std_string(void* text) {
    spare_strings.give(static_cast<std::string*>(text));
}

namespace {

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
