// Python texts and lists of texts from native ones.
#include "binding/vocabulary/results.h"

#include "binding/runtime/reference.h"

#include <climits>

PyObject* vocabulary::from_hyx_string(std::string const& text) noexcept {
    return PyUnicode_DecodeUTF8(text.data(), static_cast<Py_ssize_t>(text.size()), nullptr);
}

PyObject* vocabulary::from_strings(std::vector<std::string> const& texts) noexcept {
    if (texts.size() > INT_MAX) {
        PyErr_SetString(PyExc_OverflowError, "sequence size not valid in python");
        return nullptr;
    }
    runtime::Reference tuple = runtime::Reference::take(PyTuple_New(static_cast<Py_ssize_t>(texts.size())));
    for (std::size_t i = 0; tuple && i < texts.size(); ++i) {
        PyObject* item = SWIG_FromCharPtrAndSize(texts[i].data(), texts[i].size());
        if (!item)
            return nullptr;
        PyTuple_SET_ITEM(tuple.get(), static_cast<Py_ssize_t>(i), item);
    }
    return tuple.release();
}
