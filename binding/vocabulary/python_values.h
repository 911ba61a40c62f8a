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

// The native values of any Python iterable of wrapped ones; a sequence of three numbers and the like is taken for a
// value.
template <class Value, class List>
void read_values(PyObject* iterable, List& list) {
    runtime::Reference const fast =
        runtime::Reference::take(PySequence_Fast(iterable, "expected a sequence of values"));
    if (!fast.get())
        throw PythonError();
    for (Py_ssize_t i = 0; i < PySequence_Fast_GET_SIZE(fast.get()); ++i) {
        PyObject* item = PySequence_Fast_GET_ITEM(fast.get(), i);
        void* wrapped = nullptr;
        if (SWIG_Python_ConvertPtrAndOwn(item, &wrapped, vocabulary::descriptor<Value>()) >= 0 && wrapped) {
            list.push_back(*static_cast<Value*>(wrapped));
            continue;
        }
        double numbers[Value::size()];
        read_numbers(item, Value::size(), numbers);
        Value value;
        for (std::size_t k = 0; k < Value::size(); ++k)
            value[k] = static_cast<typename Value::value_type>(numbers[k]);
        list.push_back(value);
    }
}

} // namespace vocabulary
