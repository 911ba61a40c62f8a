// From Python numbers and sequences to native values, and from shared native objects to Python.
#pragma once

#include "binding/runtime/pointers.h"
#include "binding/runtime/reference.h"
#include "binding/runtime/user_code.h"
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

[[noreturn]] inline void refuse_type(char const* refusal, PyObject* given) {
    PyErr_Format(PyExc_TypeError, "%s, not %s", refusal, Py_TYPE(given)->tp_name);
    throw PythonError();
}

// A text is iterable, but what it has are letters.
inline bool is_text(PyObject* object) {
    return PyUnicode_Check(object) || PyBytes_Check(object);
}

// The items of any iterable as a tuple of their own: reading an item runs Python code, which may change the iterable.
// TypeError in the words of `refusal` for what is none.
inline runtime::Reference read_items(PyObject* iterable, char const* refusal) {
    if (is_text(iterable) || !(Py_TYPE(iterable)->tp_iter || PySequence_Check(iterable)))
        refuse_type(refusal, iterable);
    runtime::Reference const fast =
        runtime::Reference::take(runtime::run_user_code([&] { return PySequence_Fast(iterable, refusal); }));
    runtime::Reference items = runtime::Reference::take(fast ? PySequence_Tuple(fast.get()) : nullptr);
    if (!items)
        throw PythonError();
    return items;
}

// The first `most` items of an iterable, which may have no end.
inline runtime::Reference read_first_items(PyObject* iterable, Py_ssize_t most, char const* refusal) {
    if (PyList_Check(iterable) || PyTuple_Check(iterable))
        return read_items(iterable, refusal);
    runtime::Reference const iterator = runtime::iterate(iterable);
    if (is_text(iterable) || (!iterator && PyErr_ExceptionMatches(PyExc_TypeError)))
        refuse_type(refusal, iterable);
    if (!iterator)
        throw PythonError();
    runtime::Reference items = runtime::Reference::take(PyList_New(0));
    while (items && PyList_GET_SIZE(items.get()) < most) {
        runtime::Reference const item = runtime::next_item(iterator.get());
        if (!item || PyList_Append(items.get(), item.get()) != 0)
            break;
    }
    if (PyErr_Occurred())
        throw PythonError();
    return runtime::Reference::take(PyList_AsTuple(items.get()));
}

// The numbers of any Python iterable of exactly `count` numbers; TypeError or ValueError otherwise.
inline void read_numbers(PyObject* iterable, std::size_t count, double* numbers) {
    constexpr Py_ssize_t most = 1000; // told in messages; no value has more
    runtime::Reference const items = read_first_items(iterable, most, "expected a sequence of numbers");
    auto const given = static_cast<std::size_t>(PyTuple_GET_SIZE(items.get()));
    if (given != count) {
        PyErr_Format(PyExc_ValueError, "expected %zu numbers, got %zu", count, given);
        throw PythonError();
    }
    for (std::size_t i = 0; i < count; ++i) {
        numbers[i] = runtime::read_float(PyTuple_GET_ITEM(items.get(), static_cast<Py_ssize_t>(i)));
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
