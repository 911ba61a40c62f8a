// Reads numbers out of buffers of any type and layout.
#include "binding/vocabulary/number_arrays.h"

#include "binding/runtime/user_code.h"

#include <cmath>
#include <cstring>
#include <limits>
#include <string_view>
#include <utility>

namespace vocabulary {
namespace {

// Numbers of half precision, as they lie in memory.
struct Half {
    std::uint16_t bits;

    explicit operator float() const {
        int const exponent = bits >> 10 & 31, fraction = bits & 1023;
        float const size = exponent == 31 ? (fraction ? std::numeric_limits<float>::quiet_NaN()
                                                      : std::numeric_limits<float>::infinity())
                           : exponent     ? std::ldexp(float(1024 + fraction), exponent - 25)
                                          : std::ldexp(float(fraction), -24);
        return bits & 0x8000 ? -size : size;
    }
};

// The letter of a native type of standard size, or 0 for what is no plain number of this machine's byte order.
char number_type(Py_buffer const& view) {
    std::string_view format = view.format ? view.format : "B";
    if (!format.empty() && std::string_view("@=<").find(format.front()) != format.npos)
        format.remove_prefix(1);
    if (format.size() != 1)
        return 0;
    char const letter = format.front();
    if (letter == 'l' || letter == 'L' || letter == 'n' || letter == 'N') { // of the size that they have here
        bool const is_signed = letter == 'l' || letter == 'n';
        return view.itemsize == 8 ? (is_signed ? 'q' : 'Q') : (is_signed ? 'i' : 'I');
    }
    return std::string_view("?bBhHiIqQefd").find(letter) != std::string_view::npos ? letter : 0;
}

[[noreturn]] void refuse(PyObject* kind, char const* text) {
    PyErr_SetString(kind, text);
    throw PythonError();
}

template <class From, class To>
To converted(From number) {
    if constexpr (std::is_same_v<From, Half>)
        return static_cast<To>(static_cast<float>(number));
    else {
        if constexpr (std::is_integral_v<To>)
            if (!std::in_range<To>(number))
                refuse(PyExc_ValueError, "a whole number of the array is negative or too large here");
        return static_cast<To>(number);
    }
}

} // namespace

NumberArray::NumberArray(PyObject* object) {
    if (!PyObject_CheckBuffer(object))
        return;
    if (PyObject_GetBuffer(object, &m_view, PyBUF_STRIDED_RO | PyBUF_FORMAT) != 0) {
        PyErr_Clear();
        return;
    }
    m_type = number_type(m_view);
    if (m_type)
        return;
    bool const of_objects = m_view.format && std::string_view(m_view.format).find('O') != std::string_view::npos;
    PyBuffer_Release(&m_view);
    if (!of_objects) // complex numbers, records, texts; objects are looked at one by one
        refuse(PyExc_TypeError, "expected an array of numbers");
}

NumberArray::~NumberArray() {
    if (valid())
        PyBuffer_Release(&m_view);
}

std::size_t NumberArray::size() const {
    return static_cast<std::size_t>(m_view.len / m_view.itemsize);
}

std::size_t NumberArray::rows(std::size_t columns) const {
    bool const fits = m_view.ndim > 1    ? static_cast<std::size_t>(m_view.shape[m_view.ndim - 1]) == columns
                      : m_view.ndim == 1 ? size() % columns == 0
                                         : false;
    if (!fits) {
        auto const given = m_view.ndim > 0 ? m_view.shape[m_view.ndim - 1] : 1;
        PyErr_Format(PyExc_ValueError, "expected %zu numbers, got %zd", columns, given);
        throw PythonError();
    }
    return size() / columns;
}

template <class From, class To>
void NumberArray::convert(To* to) const {
    if constexpr (std::is_integral_v<To> && !std::is_integral_v<From>) {
        refuse(PyExc_TypeError, "expected an array of whole numbers");
    } else {
        if (size() == 0)
            return;
        if constexpr (std::is_same_v<From, To>) {
            if (PyBuffer_IsContiguous(&m_view, 'C')) {
                std::memcpy(to, m_view.buf, static_cast<std::size_t>(m_view.len));
                return;
            }
        }
        // The last dimension in one go, the others counted up.
        int const outer = m_view.ndim > 0 ? m_view.ndim - 1 : 0;
        Py_ssize_t const length = m_view.ndim > 0 ? m_view.shape[outer] : 1;
        Py_ssize_t const step = m_view.ndim > 0 ? m_view.strides[outer] : 0;
        std::vector<Py_ssize_t> place(static_cast<std::size_t>(outer), 0);
        for (auto const* row = static_cast<char const*>(m_view.buf);;) {
            for (Py_ssize_t i = 0; i < length; ++i) {
                From number;
                std::memcpy(&number, row + i * step, sizeof number);
                *to++ = converted<From, To>(number);
            }
            int dimension = outer - 1;
            for (; dimension >= 0; --dimension) {
                row += m_view.strides[dimension];
                if (++place[static_cast<std::size_t>(dimension)] < m_view.shape[dimension])
                    break;
                row -= m_view.strides[dimension] * m_view.shape[dimension];
                place[static_cast<std::size_t>(dimension)] = 0;
            }
            if (dimension < 0)
                return;
        }
    }
}

template <class Number>
void NumberArray::copy_to(Number* to) const {
    switch (m_type) {
    case '?':
        return convert<std::uint8_t>(to);
    case 'b':
        return convert<std::int8_t>(to);
    case 'B':
        return convert<std::uint8_t>(to);
    case 'h':
        return convert<std::int16_t>(to);
    case 'H':
        return convert<std::uint16_t>(to);
    case 'i':
        return convert<std::int32_t>(to);
    case 'I':
        return convert<std::uint32_t>(to);
    case 'q':
        return convert<std::int64_t>(to);
    case 'Q':
        return convert<std::uint64_t>(to);
    case 'e':
        return convert<Half>(to);
    case 'f':
        return convert<float>(to);
    default:
        return convert<double>(to);
    }
}

template void NumberArray::copy_to(float*) const;
template void NumberArray::copy_to(double*) const;
template void NumberArray::copy_to(unsigned int*) const;
template void NumberArray::copy_to(unsigned char*) const;

namespace {

void read_each_index(PyObject* iterable, std::vector<unsigned int>& indices, bool grouped) {
    auto const items = read_items(iterable, "expected a sequence of indices");
    for (Py_ssize_t i = 0; i < PyTuple_GET_SIZE(items.get()); ++i) {
        PyObject* item = PyTuple_GET_ITEM(items.get(), i);
        if (grouped && PySequence_Check(item)) {
            read_each_index(item, indices, false);
            continue;
        }
        Py_ssize_t const index = runtime::run_user_code([&] { return PyNumber_AsSsize_t(item, PyExc_OverflowError); });
        if (index == -1 && PyErr_Occurred())
            throw PythonError();
        if (index < 0 || index > UINT32_MAX)
            throw std::invalid_argument("an index of the mesh is not that of a vertex");
        indices.push_back(static_cast<unsigned int>(index));
    }
}

} // namespace

std::vector<double> read_all_numbers(PyObject* numbers) {
    std::vector<double> result;
    if (NumberArray const array(numbers); array.valid()) {
        result.resize(array.size());
        array.copy_to(result.data());
    } else {
        auto const items = read_items(numbers, "expected a sequence of numbers");
        result.resize(static_cast<std::size_t>(PyTuple_GET_SIZE(items.get())));
        read_numbers(items.get(), result.size(), result.data());
    }
    return result;
}

std::vector<unsigned int> read_indices(PyObject* indices) {
    std::vector<unsigned int> numbers;
    if (NumberArray const array(indices); array.valid()) {
        numbers.resize(array.size());
        array.copy_to(numbers.data());
    } else {
        read_each_index(indices, numbers, true);
    }
    return numbers;
}

PyObject* new_memory(std::size_t bytes, char** memory) {
    PyObject* const owner = PyByteArray_FromStringAndSize(nullptr, static_cast<Py_ssize_t>(bytes));
    if (!owner)
        throw PythonError();
    *memory = PyByteArray_AS_STRING(owner);
    return owner;
}

PyObject* view_memory(PyObject* memory, char const* format, std::size_t rows, std::size_t columns) {
    runtime::Reference const view = runtime::Reference::take(PyMemoryView_FromObject(memory));
    if (!view)
        throw PythonError();
    PyObject* const result = rows == 0 || columns == 0
                                 ? PyObject_CallMethod(view.get(), "cast", "s", format)
                                 : PyObject_CallMethod(view.get(), "cast", "s(nn)", format,
                                                       static_cast<Py_ssize_t>(rows), static_cast<Py_ssize_t>(columns));
    if (!result)
        throw PythonError();
    return result;
}

PyObject* as_array(PyObject* memory, char const* format, std::size_t rows, std::size_t columns) {
    runtime::Reference const numpy = runtime::Reference::take(PyImport_ImportModule("numpy"));
    if (!numpy && PyErr_ExceptionMatches(PyExc_ImportError)) {
        PyErr_Clear();
        return view_memory(memory, format, rows, columns);
    }
    auto const height = static_cast<Py_ssize_t>(rows), width = static_cast<Py_ssize_t>(columns);
    PyObject* const result = !numpy ? nullptr
                             : columns
                                 ? PyObject_CallMethod(numpy.get(), "ndarray", "(nn)sO", height, width, format, memory)
                                 : PyObject_CallMethod(numpy.get(), "ndarray", "nsO", height, format, memory);
    if (!result)
        throw PythonError();
    return result;
}

} // namespace vocabulary
