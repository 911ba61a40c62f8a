// Arrays of numbers as memoryviews, which NumPy takes without copying, and back.
#pragma once

#include "binding/vocabulary/python_values.h"

#include <cstring>
#include <vector>

namespace vocabulary {

template <class Number>
constexpr char const* buffer_format() {
    if constexpr (std::is_same_v<Number, float>)
        return "f";
    else if constexpr (std::is_same_v<Number, double>)
        return "d";
    else
        return "I";
}

// A memoryview of a copy of the numbers, row by row; one dimension when there are no rows, or for no columns.
template <class Number>
PyObject* to_buffer(std::vector<Number> const& numbers, std::size_t columns) {
    runtime::Reference const bytes = runtime::Reference::take(PyBytes_FromStringAndSize(
        reinterpret_cast<char const*>(numbers.data()), static_cast<Py_ssize_t>(numbers.size() * sizeof(Number))));
    runtime::Reference const view =
        runtime::Reference::take(bytes.get() ? PyMemoryView_FromObject(bytes.get()) : nullptr);
    if (!view.get())
        throw PythonError();
    char const* format = buffer_format<Number>();
    PyObject* result =
        numbers.empty() || columns == 0
            ? PyObject_CallMethod(view.get(), "cast", "s", format)
            : PyObject_CallMethod(view.get(), "cast", "s(nn)", format,
                                  static_cast<Py_ssize_t>(numbers.size() / columns), static_cast<Py_ssize_t>(columns));
    if (!result)
        throw PythonError();
    return result;
}

// The numbers of a contiguous buffer of float or double, whatever its shape; TypeError otherwise.
inline std::vector<double> read_buffer(PyObject* object) {
    Py_buffer view;
    if (PyObject_GetBuffer(object, &view, PyBUF_C_CONTIGUOUS | PyBUF_FORMAT) != 0)
        throw PythonError();
    std::vector<double> numbers;
    if (std::strcmp(view.format, "f") == 0)
        numbers.assign(static_cast<float const*>(view.buf),
                       static_cast<float const*>(view.buf) + view.len / sizeof(float));
    else if (std::strcmp(view.format, "d") == 0)
        numbers.assign(static_cast<double const*>(view.buf),
                       static_cast<double const*>(view.buf) + view.len / sizeof(double));
    else
        PyErr_SetString(PyExc_TypeError, "expected an array of float or double");
    PyBuffer_Release(&view);
    if (PyErr_Occurred())
        throw PythonError();
    return numbers;
}

} // namespace vocabulary
