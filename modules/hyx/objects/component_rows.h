// The rows that all values of a few numbers have: sequence, arithmetic, comparison, text.
#pragma once

#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"

#include <charconv>
#include <string>

namespace modules {

template <class Value>
using Number = typename Value::value_type;

template <class Value>
std::size_t checked_index(long index) {
    long const size = static_cast<long>(Value::size());
    long const place = index < 0 ? index + size : index;
    if (place < 0 || place >= size)
        throw std::out_of_range("component index out of range: there are " + std::to_string(size));
    return static_cast<std::size_t>(place);
}

template <class Value>
unsigned long length_of(Value const&) {
    return Value::size();
}

template <class Value>
Number<Value> get_item(Value const& self, long index) {
    return self[checked_index<Value>(index)];
}

template <class Value>
void set_item(Value& self, long index, Number<Value> number) {
    self[checked_index<Value>(index)] = number;
}

template <class Value>
PyObject* get_slice(Value const& self, SWIGPY_SLICEOBJECT* slice) {
    runtime::Reference const all = runtime::Reference::take(PyTuple_New(static_cast<Py_ssize_t>(Value::size())));
    if (!all.get())
        throw vocabulary::PythonError();
    for (std::size_t i = 0; i < Value::size(); ++i)
        PyTuple_SET_ITEM(all.get(), i, vocabulary::from_scalar(self[i]));
    return PyObject_GetItem(all.get(), reinterpret_cast<PyObject*>(slice));
}

template <class Value>
bool equal(Value const& self, Value const& other) {
    return self == other;
}

template <class Value>
Value add(Value const& self, Value const& other) {
    return self + other;
}

template <class Value>
Value subtract(Value const& self, Value const& other) {
    return self - other;
}

template <class Value>
Value scale(Value const& self, Number<Value> factor) {
    return self * factor;
}

template <class Value>
Value negate(Value const& self) {
    return -self;
}

template <class Value>
Value divide(Value const& self, Number<Value> divisor) {
    if (divisor == 0) {
        PyErr_SetString(PyExc_ZeroDivisionError, "division of a value by zero");
        throw vocabulary::PythonError();
    }
    return self / divisor;
}

// Each number as the shortest text that reads back as it.
template <class Value>
std::string numbers_text(Value const& self) {
    std::string text;
    for (std::size_t i = 0; i < Value::size(); ++i) {
        char digits[40];
        auto const end = std::to_chars(digits, digits + sizeof digits, self[i]);
        text.append(i ? ", " : "").append(digits, end.ptr);
    }
    return text;
}

template <class Value>
Value* from_numbers(PyObject* numbers) {
    double read[Value::size()];
    vocabulary::read_numbers(numbers, Value::size(), read);
    auto* value = new Value;
    for (std::size_t i = 0; i < Value::size(); ++i)
        (*value)[i] = static_cast<Number<Value>>(read[i]);
    return value;
}

} // namespace modules

// `number_` is the native type of a component.
#define SEQUENCE_ROWS(class_, name_, number_)                                                             \
    FUNCTION(delete_##name_, DELETE(class_)),                                                             \
        FUNCTION(name_##___len__, ADAPTER(class_, __len__, modules::length_of<class_>, () const)),        \
        FUNCTION(name_##___getitem__,                                                                     \
                 CONTAINER(ADAPTER(class_, __getitem__, modules::get_item<class_>, (long) const)),        \
                 ADAPTER(class_, __getitem__, modules::get_slice<class_>, (SWIGPY_SLICEOBJECT*) const)),  \
        FUNCTION(name_##___setitem__,                                                                     \
                 CONTAINER(ADAPTER(class_, __setitem__, modules::set_item<class_>, (long, number_)))),    \
        OPERATOR(name_##___eq__, ADAPTER(class_, __eq__, modules::equal<class_>, (class_ const&) const)), \
        REGISTER(class_, name_), INIT(name_)

#define ARITHMETIC_ROWS(class_, name_, number_)                                                                \
    OPERATOR(name_##___add__, ADAPTER(class_, __add__, modules::add<class_>, (class_ const&) const)),          \
        OPERATOR(name_##___sub__, ADAPTER(class_, __sub__, modules::subtract<class_>, (class_ const&) const)), \
        OPERATOR(name_##___rmul__, ADAPTER(class_, __rmul__, modules::scale<class_>, (number_) const)),        \
        OPERATOR(name_##___truediv__, ADAPTER(class_, __truediv__, modules::divide<class_>, (number_) const)), \
        FUNCTION(name_##___neg__, ADAPTER(class_, __neg__, modules::negate<class_>, () const))

#define SCALE_ROW(class_, name_, number_) \
    OPERATOR(name_##___mul__, ADAPTER(class_, __mul__, modules::scale<class_>, (number_) const))

#define LENGTH_ROWS(class_, name_)                                     \
    FUNCTION(name_##_dot, METHOD(class_, dot, (class_ const&) const)), \
        FUNCTION(name_##_length, METHOD(class_, length, () const)),    \
        FUNCTION(name_##_length2, METHOD(class_, length2, () const)),  \
        FUNCTION(name_##_normal, METHOD(class_, normal, () const)),    \
        FUNCTION(name_##_normalize, METHOD(class_, normalize, ()))

#define MEMBER_ROWS(class_, name_, member_, number_)         \
    FUNCTION(name_##_##member_##_get, GET(class_, member_)), \
        FUNCTION(name_##_##member_##_set, SET(class_, member_, (number_)))
