// Any Python iterable where a native sequence is expected.
#pragma once

#include "binding/containers/element_types.h"
#include "binding/runtime/errors.h"
#include "binding/runtime/reference.h"
#include "binding/runtime/status.h"
#include "binding/runtime/user_code.h"
#include "binding/runtime/values.h"

#include <memory>
#include <stdexcept>
#include <utility>

namespace swig {

// Stores a copy of an element in *value. A status code; no error is left pending.
template <class Type>
struct as_val {
    int operator()(PyObject* object, Type* value) const {
        void* pointer = nullptr;
        auto const status = SWIG_Python_ConvertPtrAndOwn(object, &pointer, type_info<Type>());
        if (status < 0 || !pointer)
            return SWIG_ERROR;
        *value = *static_cast<Type*>(pointer);
        return SWIG_OK;
    }
};

template <>
struct as_val<std::string> {
    int operator()(PyObject* object, std::string* value) const {
        std::string* text = nullptr;
        auto const status = SWIG_AsPtr_std_string(object, &text);
        if (status < 0 || !text)
            return SWIG_ERROR;
        if (status != SWIG_NEWOBJ) {
            *value = *text;
            return SWIG_OK;
        }
        *value = std::move(*text);
        delete text;
        return SWIG_OK;
    }
};

template <class Sequence>
struct traits_asptr_stdseq {
    using value_type = typename Sequence::value_type;

    // Stores in *seq the native sequence of a Python object.
    // SWIG_OK: it is the one that the object wraps, or NULL for None. SWIG_NEWOBJ: it is a new one, filled from an
    // iterable, that the caller deletes. An item that is no element leaves a TypeError pending beneath the failure.
    // There is no way only to ask: that would use up a one-shot iterable. Dispatchers keep what their test converted.
    static int asptr(PyObject* object, Sequence** seq) {
        if (object == Py_None || SWIG_Python_GetSwigThis(object)) {
            void* pointer = nullptr;
            if (SWIG_Python_ConvertPtrAndOwn(object, &pointer, type_info<Sequence>()) == SWIG_OK) {
                *seq = static_cast<Sequence*>(pointer);
                return SWIG_OK;
            }
        }
        if (runtime::is_ending())
            return SWIG_UserError;
        auto const iterator = runtime::iterate(object);
        if (!iterator) {
            if (is_of_user())
                return SWIG_UserError;
            PyErr_Clear();
            return SWIG_ERROR;
        }
        return collect(iterator.get(), seq);
    }

private:
    // A TypeError says that the object is no such sequence; whatever else an iteration raises is the user's.
    static bool is_of_user() { return !PyErr_ExceptionMatches(PyExc_TypeError); }

    static int collect(PyObject* iterator, Sequence** seq) {
        try {
            auto filled = std::make_unique<Sequence>();
            while (auto const item = runtime::next_item(iterator))
                filled->push_back(element(item.get()));
            if (PyErr_Occurred())
                return is_of_user() ? SWIG_UserError : SWIG_ERROR;
            *seq = filled.release();
            return SWIG_NEWOBJ;
        } catch (std::exception const& failure) {
            if (!PyErr_Occurred())
                PyErr_SetString(PyExc_TypeError, failure.what());
            return runtime::is_ending() ? SWIG_UserError : SWIG_ERROR;
        }
    }

    static value_type element(PyObject* item) {
        value_type value;
        if (as_val<value_type>()(item, &value) >= 0)
            return value;
        if (!PyErr_Occurred())
            PyErr_SetString(PyExc_TypeError, traits<value_type>::type_name);
        throw std::invalid_argument("bad type");
    }
};

} // namespace swig
