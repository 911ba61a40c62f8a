// The rows that all values of a few numbers have: sequence, arithmetic, comparison, text.
#pragma once

#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"

#include <charconv>
#include <string>

namespace vocabulary {

template <class Value>
using Component = typename Value::value_type;

// How many numbers a value has. Specialise for a class that does not say it.
template <class Value>
inline constexpr std::size_t component_count = [] {
    if constexpr (requires { Value::num_components; })
        return static_cast<std::size_t>(Value::num_components);
    else
        return Value::size();
}();

template <class Value>
std::size_t component_index(long index) {
    long const size = static_cast<long>(component_count<Value>);
    long const place = index < 0 ? index + size : index;
    if (place < 0 || place >= size)
        throw std::out_of_range("component index out of range: there are " + std::to_string(size));
    return static_cast<std::size_t>(place);
}

template <class Value>
unsigned long component_length(Value const&) {
    return component_count<Value>;
}

template <class Value>
Component<Value> get_component(Value const& self, long index) {
    return self[component_index<Value>(index)];
}

template <class Value>
void set_component(Value& self, long index, Component<Value> number) {
    self[component_index<Value>(index)] = number;
}

template <class Value>
PyObject* get_components(Value const& self, SWIGPY_SLICEOBJECT* slice) {
    runtime::Reference const all =
        runtime::Reference::take(PyTuple_New(static_cast<Py_ssize_t>(component_count<Value>)));
    if (!all.get())
        throw PythonError();
    for (std::size_t i = 0; i < component_count<Value>; ++i)
        PyTuple_SET_ITEM(all.get(), i, from_scalar(self[i]));
    return PyObject_GetItem(all.get(), reinterpret_cast<PyObject*>(slice));
}

template <class Value>
bool same_components(Value const& self, Value const& other) {
    return self == other;
}

template <class Value>
Value sum(Value const& self, Value const& other) {
    return self + other;
}

template <class Value>
Value difference(Value const& self, Value const& other) {
    return self - other;
}

template <class Value>
Value scaled(Value const& self, Component<Value> factor) {
    return self * factor;
}

template <class Value>
Value opposite(Value const& self) {
    return -self;
}

template <class Value>
Value quotient(Value const& self, Component<Value> divisor) {
    if (divisor == 0) {
        PyErr_SetString(PyExc_ZeroDivisionError, "division of a value by zero");
        throw PythonError();
    }
    return self / divisor;
}

// Each number as the shortest text that reads back as it.
template <class Value>
std::string components_text(Value const& self) {
    std::string text;
    for (std::size_t i = 0; i < component_count<Value>; ++i) {
        char digits[40];
        auto const end = std::to_chars(digits, digits + sizeof digits, self[i]);
        text.append(i ? ", " : "").append(digits, end.ptr);
    }
    return text;
}

template <class Value>
Value* from_components(PyObject* numbers) {
    double read[component_count<Value>];
    read_numbers(numbers, component_count<Value>, read);
    auto* value = new Value;
    for (std::size_t i = 0; i < component_count<Value>; ++i)
        (*value)[i] = static_cast<Component<Value>>(read[i]);
    return value;
}

} // namespace vocabulary

// `number_` is the native type of a component.
#define COMPONENT_ROWS(class_, name_, number_)                                                                         \
    FUNCTION(delete_##name_, DELETE(class_)),                                                                          \
        FUNCTION(name_##___len__, ADAPTER(class_, __len__, vocabulary::component_length<class_>, () const)),           \
        FUNCTION(name_##___getitem__,                                                                                  \
                 CONTAINER(ADAPTER(class_, __getitem__, vocabulary::get_component<class_>, (long) const)),             \
                 ADAPTER(class_, __getitem__, vocabulary::get_components<class_>, (SWIGPY_SLICEOBJECT*) const)),       \
        FUNCTION(name_##___setitem__,                                                                                  \
                 CONTAINER(ADAPTER(class_, __setitem__, vocabulary::set_component<class_>, (long, number_)))),         \
        OPERATOR(name_##___eq__, ADAPTER(class_, __eq__, vocabulary::same_components<class_>, (class_ const&) const)), \
        REGISTER(class_, name_), INIT(name_)

#define ARITHMETIC_ROWS(class_, name_, number_)                                                                     \
    OPERATOR(name_##___add__, ADAPTER(class_, __add__, vocabulary::sum<class_>, (class_ const&) const)),            \
        OPERATOR(name_##___sub__, ADAPTER(class_, __sub__, vocabulary::difference<class_>, (class_ const&) const)), \
        OPERATOR(name_##___rmul__, ADAPTER(class_, __rmul__, vocabulary::scaled<class_>, (number_) const)),         \
        OPERATOR(name_##___truediv__, ADAPTER(class_, __truediv__, vocabulary::quotient<class_>, (number_) const)), \
        FUNCTION(name_##___neg__, ADAPTER(class_, __neg__, vocabulary::opposite<class_>, () const))

#define SCALE_ROW(class_, name_, number_) \
    OPERATOR(name_##___mul__, ADAPTER(class_, __mul__, vocabulary::scaled<class_>, (number_) const))

#define LENGTH_ROWS(class_, name_)                                     \
    FUNCTION(name_##_dot, METHOD(class_, dot, (class_ const&) const)), \
        FUNCTION(name_##_length, METHOD(class_, length, () const)),    \
        FUNCTION(name_##_length2, METHOD(class_, length2, () const)),  \
        FUNCTION(name_##_normal, METHOD(class_, normal, () const)),    \
        FUNCTION(name_##_normalize, METHOD(class_, normalize, ()))

#define MEMBER_ROWS(class_, name_, member_, number_)         \
    FUNCTION(name_##_##member_##_get, GET(class_, member_)), \
        FUNCTION(name_##_##member_##_set, SET(class_, member_, (number_)))
