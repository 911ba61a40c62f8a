// Rows of the scene-graph library's classes: shared objects and values of a few numbers.
#pragma once

#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"

#include <osg/Referenced>

#include <charconv>
#include <string>

namespace modules {

template <class Value>
constexpr std::size_t count_of = Value::num_components;

template <class Value>
std::size_t component_index(long index) {
    long const size = static_cast<long>(count_of<Value>);
    long const place = index < 0 ? index + size : index;
    if (place < 0 || place >= size)
        throw std::out_of_range("component index out of range: there are " + std::to_string(size));
    return static_cast<std::size_t>(place);
}

template <class Value>
unsigned long component_count(Value const&) {
    return count_of<Value>;
}

template <class Value>
double get_component(Value const& self, long index) {
    return self.ptr()[component_index<Value>(index)];
}

template <class Value>
void set_component(Value& self, long index, double number) {
    self.ptr()[component_index<Value>(index)] = static_cast<typename Value::value_type>(number);
}

template <class Value>
bool same_components(Value const& self, Value const& other) {
    return self == other;
}

template <class Value>
std::string component_text(Value const& self) {
    std::string text;
    for (std::size_t i = 0; i < count_of<Value>; ++i) {
        char digits[40];
        auto const end = std::to_chars(digits, digits + sizeof digits, self.ptr()[i]);
        text.append(i ? ", " : "").append(digits, end.ptr);
    }
    return text;
}

template <class Value>
Value* from_components(PyObject* numbers) {
    double read[count_of<Value>];
    vocabulary::read_numbers(numbers, count_of<Value>, read);
    auto* value = new Value;
    for (std::size_t i = 0; i < count_of<Value>; ++i)
        value->ptr()[i] = static_cast<typename Value::value_type>(read[i]);
    return value;
}

} // namespace modules

#define SHARED_CLASS_ROWS(class_, name_) FUNCTION(delete_##name_, DELETE(class_)), REGISTER(class_, name_), INIT(name_)

#define COMPONENT_ROWS(class_, name_)                                                                               \
    FUNCTION(delete_##name_, DELETE(class_)),                                                                       \
        FUNCTION(name_##___len__, ADAPTER(class_, __len__, modules::component_count<class_>, () const)),            \
        FUNCTION(name_##___getitem__,                                                                               \
                 CONTAINER(ADAPTER(class_, __getitem__, modules::get_component<class_>, (long) const))),            \
        FUNCTION(name_##___setitem__,                                                                               \
                 CONTAINER(ADAPTER(class_, __setitem__, modules::set_component<class_>, (long, double)))),          \
        OPERATOR(name_##___eq__, ADAPTER(class_, __eq__, modules::same_components<class_>, (class_ const&) const)), \
        REGISTER(class_, name_), INIT(name_)
