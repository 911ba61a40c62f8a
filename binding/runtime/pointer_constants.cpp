// Installs pointer constants, and names their types in the doc strings that ask for it.
#include "binding/runtime/pointer_constants.h"

#include "binding/runtime/packed_object.h"
#include "binding/runtime/pointers.h"
#include "binding/runtime/reference.h"
#include "binding/runtime/state.h"

#include <cstdlib>
#include <cstring>

namespace {

using runtime::pointer_reference;

constexpr std::size_t marker_size = sizeof pointer_reference - 1;

swig_const_info const* find_named(swig_const_info const* constants, char const* text) noexcept {
    for (; constants->type; ++constants)
        if (std::strncmp(text, constants->name, std::strlen(constants->name)) == 0)
            return constants;
    return nullptr;
}

// The doc text with the constant's pointer and type in place of its name; NULL when memory is short. Never freed: the
// method table keeps it.
char* doc_with_pointer(char const* doc, std::size_t before, swig_const_info const& constant) noexcept {
    char const* type = swig_type_initial[constant.ptype - swig_types]->name;
    auto* text = static_cast<char*>(std::malloc(before + std::strlen(type) + 28));
    if (!text)
        return nullptr;
    std::memcpy(text, doc, before);
    std::memcpy(text + before, pointer_reference, marker_size);
    char* end = runtime::encode_bytes(text + before + marker_size, &constant.pvalue, sizeof(void*));
    std::strcpy(end, type);
    return text;
}

PyObject* new_constant(swig_const_info const& constant) noexcept {
    switch (constant.type) {
    case SWIG_PY_POINTER:
        return SWIG_Python_NewPointerObj(constant.pvalue, *constant.ptype, PointerResult::borrowed_proxied);
    case SWIG_PY_BINARY:
        return SwigPyPacked_Create(constant.pvalue, static_cast<std::size_t>(constant.lvalue), *constant.ptype);
    default:
        return nullptr;
    }
}

} // namespace

void SWIG_Python_FixMethods(PyMethodDef* methods, swig_const_info const* constants) noexcept {
    for (; methods->ml_name; ++methods) {
        char const* doc = methods->ml_doc;
        char const* reference = doc ? std::strstr(doc, pointer_reference) : nullptr;
        swig_const_info const* constant = reference ? find_named(constants, reference + marker_size) : nullptr;
        if (!constant || constant->type != SWIG_PY_POINTER || !constant->pvalue)
            continue;
        if (char* text = doc_with_pointer(doc, static_cast<std::size_t>(reference - doc), *constant))
            methods->ml_doc = text;
    }
}

void SWIG_Python_InstallConstants(PyObject* dict, swig_const_info const* constants) noexcept {
    for (; constants->type; ++constants)
        if (auto object = runtime::Reference::take(new_constant(*constants)))
            PyDict_SetItemString(dict, constants->name, object.get());
}
