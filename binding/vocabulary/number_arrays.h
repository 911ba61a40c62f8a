// Arrays of numbers as arguments, of whatever type and layout, and as results: one copy each way.
#pragma once

#include "binding/vocabulary/python_values.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace vocabulary {

// The numbers of a buffer: a NumPy array, a memoryview, bytes. It is held for as long as this lives.
class NumberArray {
public:
    // `valid` is false for an object that gives no buffer, or one of objects. TypeError for a buffer of other things
    // than numbers.
    explicit NumberArray(PyObject* object);
    ~NumberArray();
    NumberArray(NumberArray const&) = delete;
    NumberArray& operator=(NumberArray const&) = delete;

    bool valid() const { return m_type != 0; }

    bool holds_bytes() const { return m_type == 'B'; }

    std::size_t size() const;

    // How many rows of so many numbers: a dimension of the numbers of a row comes last, or there is one dimension.
    // ValueError otherwise.
    std::size_t rows(std::size_t columns) const;

    // All numbers, the last dimension first. Numbers with a fraction become no whole ones (TypeError), and whole ones
    // must fit (ValueError).
    template <class Number>
    void copy_to(Number* to) const;

private:
    template <class From, class To>
    void convert(To* to) const;

    Py_buffer m_view;
    char m_type = 0; // of the letters of the struct module, without byte order; sizes are those of standard types
};

extern template void NumberArray::copy_to(float*) const;
extern template void NumberArray::copy_to(double*) const;
extern template void NumberArray::copy_to(unsigned int*) const;
extern template void NumberArray::copy_to(unsigned char*) const;

// Rows of `columns` numbers each, out of an array or of any iterable of iterables. `place` is told how many rows there
// are and gives the memory for them; it is not called when the rows are refused.
template <class Number, class Place>
void read_rows(PyObject* rows, std::size_t columns, Place const& place) {
    if (NumberArray const array(rows); array.valid()) {
        std::size_t const count = array.rows(columns);
        array.copy_to<Number>(place(count));
        return;
    }
    auto const items = read_items(rows, "expected a sequence of rows of numbers");
    auto const count = static_cast<std::size_t>(PyTuple_GET_SIZE(items.get()));
    std::vector<double> numbers(count * columns);
    for (std::size_t i = 0; i < count; ++i)
        read_numbers(PyTuple_GET_ITEM(items.get(), static_cast<Py_ssize_t>(i)), columns, numbers.data() + i * columns);
    Number* const to = place(count);
    for (std::size_t i = 0; i < numbers.size(); ++i)
        to[i] = static_cast<Number>(numbers[i]);
}

// The same into memory of its own.
inline std::vector<double> read_rows(PyObject* rows, std::size_t columns) {
    std::vector<double> numbers;
    read_rows<double>(rows, columns, [&](std::size_t count) {
        numbers.resize(count * columns);
        return numbers.data();
    });
    return numbers;
}

// All numbers of an array of any shape, or of any iterable of numbers.
std::vector<double> read_all_numbers(PyObject* numbers);

// Whole numbers out of an array of any shape, or of any iterable, as they are or in groups.
std::vector<unsigned int> read_indices(PyObject* indices);

// Memory of Python's for an array, and what shows it: a memoryview, which has one dimension for no columns and for no
// rows, and whose rows cannot be indexed; or an array of NumPy's, a memoryview where that is not installed.
PyObject* new_memory(std::size_t bytes, char** memory);
PyObject* view_memory(PyObject* memory, char const* format, std::size_t rows, std::size_t columns);
PyObject* as_array(PyObject* memory, char const* format, std::size_t rows, std::size_t columns);
using Shown = decltype(&as_array);

// A new array that the script may write to. `fill` writes its numbers, row by row.
template <class Number, class Fill>
PyObject* new_array(std::size_t rows, std::size_t columns, Fill const& fill, Shown shown = as_array) {
    static_assert(std::is_same_v<Number, float> || std::is_same_v<Number, double> || std::is_same_v<Number, int> ||
                  std::is_same_v<Number, unsigned int> || std::is_same_v<Number, unsigned char>);
    constexpr char const* format = std::is_same_v<Number, float>          ? "f"
                                   : std::is_same_v<Number, double>       ? "d"
                                   : std::is_same_v<Number, int>          ? "i"
                                   : std::is_same_v<Number, unsigned int> ? "I"
                                                                          : "B";
    char* memory = nullptr;
    std::size_t const count = rows * (columns ? columns : 1);
    runtime::Reference const owner = runtime::Reference::take(new_memory(count * sizeof(Number), &memory));
    fill(reinterpret_cast<Number*>(memory));
    return shown(owner.get(), format, rows, columns);
}

// A copy of numbers that lie one after the other.
template <class Number>
PyObject* copied_array(Number const* numbers, std::size_t rows, std::size_t columns, Shown shown = as_array) {
    return new_array<Number>(
        rows, columns, [&](Number* to) { std::copy_n(numbers, rows * (columns ? columns : 1), to); }, shown);
}

} // namespace vocabulary
