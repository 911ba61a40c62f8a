// Native lists filled from any Python iterable, and lists of numbers as buffers.
#pragma once

#include "binding/containers/list.h"
#include "binding/runtime/user_code.h"
#include "binding/vocabulary/number_arrays.h"

#include <memory>
#include <string>

namespace vocabulary {

template <class Element>
struct ListReader {
    // A wrapped element, or a sequence of as many numbers as the element has.
    static Element read(PyObject* item) {
        void* wrapped = nullptr;
        if (SWIG_Python_ConvertPtrAndOwn(item, &wrapped, descriptor<Element>()) >= 0 && wrapped)
            return *static_cast<Element*>(wrapped);
        if constexpr (requires { Element::size(); }) {
            double numbers[Element::size()];
            read_numbers(item, Element::size(), numbers);
            Element element;
            for (std::size_t i = 0; i < Element::size(); ++i)
                element[i] = static_cast<typename Element::value_type>(numbers[i]);
            return element;
        } else {
            PyErr_Format(PyExc_TypeError, "expected items of type %s, not %s", TypeName<Element>::text.data(),
                         Py_TYPE(item)->tp_name);
            throw PythonError();
        }
    }
};

template <class Number>
    requires std::is_arithmetic_v<Number>
struct ListReader<Number> {
    static Number read(PyObject* item) {
        double const number = runtime::read_float(item);
        if (number == -1 && PyErr_Occurred())
            throw PythonError();
        return static_cast<Number>(number);
    }
};

template <class Object>
struct ListReader<osg::ref_ptr<Object>> {
    static osg::ref_ptr<Object> read(PyObject* item) {
        void* wrapped = nullptr;
        if (SWIG_Python_ConvertPtrAndOwn(item, &wrapped, descriptor<Object>()) < 0) {
            PyErr_Format(PyExc_TypeError, "expected items of type %s, not %s", TypeName<Object>::text.data(),
                         Py_TYPE(item)->tp_name);
            throw PythonError();
        }
        return static_cast<Object*>(wrapped);
    }
};

// What numbers an element of a list is, one after the other.
template <class Element>
struct PlainNumbers {
    using Number = typename Element::value_type;
    static constexpr std::size_t columns = Element::size();
    static_assert(sizeof(Element) == columns * sizeof(Number));
};

template <class Element>
    requires std::is_arithmetic_v<Element>
struct PlainNumbers<Element> {
    using Number = Element;
    static constexpr std::size_t columns = 1;
};

template <class Element>
constexpr bool is_plain_numbers = std::is_same_v<Element, float> || std::is_same_v<Element, double> || requires {
    Element::size();
    requires std::is_same_v<typename Element::value_type, float> ||
                 std::is_same_v<typename Element::value_type, double>;
};

// A copy of a wrapped list, or of the items of any iterable.
template <class List>
List read_list(PyObject* iterable) {
    void* wrapped = nullptr;
    if (SWIG_Python_ConvertPtrAndOwn(iterable, &wrapped, descriptor<List>()) >= 0 && wrapped)
        return *static_cast<List*>(wrapped);
    List list;
    if constexpr (is_plain_numbers<typename List::value_type>) {
        using Numbers = PlainNumbers<typename List::value_type>;
        if (NumberArray const array(iterable); array.valid()) {
            list.resize(array.rows(Numbers::columns));
            array.copy_to(reinterpret_cast<typename Numbers::Number*>(list.data()));
            return list;
        }
    }
    runtime::Reference const iterator = runtime::iterate(iterable);
    if (!iterator)
        throw PythonError();
    while (runtime::Reference const item = runtime::next_item(iterator.get()))
        list.push_back(ListReader<typename List::value_type>::read(item.get()));
    if (PyErr_Occurred())
        throw PythonError();
    return list;
}

template <class List>
List* new_list(PyObject* iterable) {
    return new List(read_list<List>(iterable));
}

template <class List>
void set_list_slice(List& self, SWIGPY_SLICEOBJECT* slice, PyObject* iterable) {
    swig::ListMethods<List>::set_slice(self, slice, read_list<List>(iterable));
}

template <class List>
void extend_list(List& self, PyObject* iterable) {
    swig::ListMethods<List>::extend(self, read_list<List>(iterable));
}

// A copy: the list's own storage moves when the list grows.
template <class List>
PyObject* list_array(List const& self, Shown shown = as_array) {
    using Element = typename List::value_type;
    using Numbers = PlainNumbers<Element>;
    return copied_array(reinterpret_cast<typename Numbers::Number const*>(self.data()), self.size(),
                        std::is_arithmetic_v<Element> ? 0 : Numbers::columns, shown);
}

// What were written to it would be lost, so it is not let.
template <class List>
PyObject* list_buffer(List const& self, int) {
    runtime::Reference const copy = runtime::Reference::take(list_array(self, view_memory));
    return PyObject_CallMethod(copy.get(), "toreadonly", nullptr);
}

} // namespace vocabulary

// The rows of every native list: what a Python list has, under its names. `element_` is the native type of an element
// as an argument; `result_` is PLAIN for values, SHARED for objects that count references.
#define LIST_ROWS(class_, name_, element_, result_)                                                                    \
    FUNCTION(new_##name_, NEW(class_, ()), MAKE(class_, vocabulary::new_list<class_>, (PyObject*))),                   \
        FUNCTION(delete_##name_, DELETE(class_)),                                                                      \
        FUNCTION(name_##___bool__, ADAPTER(class_, __bool__, swig::ListMethods<class_>::is_filled, () const)),         \
        FUNCTION(name_##___len__, ADAPTER(class_, __len__, swig::ListMethods<class_>::length, () const)),              \
        FUNCTION(                                                                                                      \
            name_##___getitem__,                                                                                       \
            OWNED(                                                                                                     \
                CONTAINER(ADAPTER(class_, __getitem__, swig::ListMethods<class_>::get_slice, (SWIGPY_SLICEOBJECT*)))), \
            CONTAINER(result_(ADAPTER(class_, __getitem__, swig::ListMethods<class_>::get_item, (ptrdiff_t) const)))), \
        FUNCTION(name_##___setitem__,                                                                                  \
                 CONTAINER(ADAPTER(class_, __setitem__, vocabulary::set_list_slice<class_>,                            \
                                   (SWIGPY_SLICEOBJECT*, PyObject*))),                                                 \
                 CONTAINER(ADAPTER(class_, __setitem__, swig::ListMethods<class_>::set_item, (ptrdiff_t, element_)))), \
        FUNCTION(name_##___delitem__,                                                                                  \
                 CONTAINER(ADAPTER(class_, __delitem__, swig::SequenceMethods<class_>::delete_item, (ptrdiff_t))),     \
                 CONTAINER(ADAPTER(class_, __delitem__, swig::SequenceMethods<class_>::delete_slice,                   \
                                   (SWIGPY_SLICEOBJECT*)))),                                                           \
        FUNCTION(name_##_append, ADAPTER(class_, append, swig::ListMethods<class_>::append, (element_))),              \
        FUNCTION(name_##_pop, CONTAINER(result_(ADAPTER(class_, pop, swig::ListMethods<class_>::pop, ()))),            \
                 CONTAINER(result_(ADAPTER(class_, pop, swig::ListMethods<class_>::pop_at, (ptrdiff_t))))),            \
        FUNCTION(name_##_insert, ADAPTER(class_, insert, swig::ListMethods<class_>::insert, (ptrdiff_t, element_))),   \
        FUNCTION(name_##_extend, ADAPTER(class_, extend, vocabulary::extend_list<class_>, (PyObject*))),               \
        FUNCTION(name_##_clear, ADAPTER(class_, clear, swig::ListMethods<class_>::clear, ())),                         \
        REGISTER(class_, name_), INIT(name_)

// Lists of numbers, and of values of as many numbers each, give them as a buffer.
#define BUFFER_ROW(class_, name_) \
    FUNCTION(name_##___buffer__, ADAPTER(class_, __buffer__, vocabulary::list_buffer<class_>, (int) const))

#define PLAIN(...) __VA_ARGS__
