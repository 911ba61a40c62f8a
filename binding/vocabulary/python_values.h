// From Python numbers and sequences to native values, and from shared native objects to Python.
#pragma once

#include "binding/runtime/pointers.h"
#include "binding/runtime/reference.h"
#include "binding/vocabulary/native_types.h"
#include "binding/vocabulary/record.h"
#include "binding/vocabulary/results.h"

#include <cstddef>
#include <stdexcept>

namespace vocabulary {

// Raised with a Python error set, which the wrapper keeps.
struct PythonError : std::runtime_error {
    PythonError() : std::runtime_error("a Python error is set") {}
};

// The numbers of any Python iterable of exactly `count` numbers; TypeError or ValueError otherwise.
inline void read_numbers(PyObject* iterable, std::size_t count, double* numbers) {
    runtime::Reference const fast =
        runtime::Reference::take(PySequence_Fast(iterable, "expected a sequence of numbers"));
    if (!fast.get())
        throw PythonError();
    auto const given = static_cast<std::size_t>(PySequence_Fast_GET_SIZE(fast.get()));
    if (given != count) {
        PyErr_Format(PyExc_ValueError, "expected %zu numbers, got %zu", count, given);
        throw PythonError();
    }
    for (std::size_t i = 0; i < count; ++i) {
        numbers[i] = PyFloat_AsDouble(PySequence_Fast_GET_ITEM(fast.get(), i));
        if (numbers[i] == -1 && PyErr_Occurred())
            throw PythonError();
    }
}

// A list of Python objects that keep the native ones of a list of holders alive.
template <class List>
PyObject* to_shared_list(List const& list) {
    runtime::Reference result = runtime::Reference::take(PyList_New(static_cast<Py_ssize_t>(list.size())));
    if (!result.get())
        throw PythonError();
    Py_ssize_t place = 0;
    for (auto const& holder : list) {
        PyObject* item = to_shared(holder.get());
        if (!item)
            throw PythonError();
        PyList_SET_ITEM(result.get(), place++, item);
    }
    return result.release();
}

// A list of new Python objects, one copy of each value.
template <class List>
PyObject* to_list(List const& list) {
    runtime::Reference result = runtime::Reference::take(PyList_New(static_cast<Py_ssize_t>(list.size())));
    if (!result.get())
        throw PythonError();
    Py_ssize_t place = 0;
    for (auto const& value : list) {
        PyObject* item;
        if constexpr (std::is_arithmetic_v<std::remove_cvref_t<decltype(value)>>)
            item = from_scalar(value);
        else
            item = from_object(value);
        if (!item)
            throw PythonError();
        PyList_SET_ITEM(result.get(), place++, item);
    }
    return result.release();
}

} // namespace vocabulary
