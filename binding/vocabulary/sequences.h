// What rows about native sequences need beside the general words: arguments made from iterables, iterator arguments,
// results that keep their sequence alive, and the exceptions of iterators.
#pragma once

#include "binding/containers/element_views.h"
#include "binding/containers/iterator.h"
#include "binding/containers/sequence_conversion.h"
#include "binding/vocabulary/conversions.h"
#include "binding/vocabulary/native_types.h"
#include "binding/vocabulary/record.h"

#include <new>

namespace vocabulary {

// The conversion of any iterable into a Sequence. Say for each sequence class that crosses as an argument:
//     template <> inline constexpr Conversion const *sequence_conversion<Sequence> = &sequence_argument<Sequence>;
template <class Sequence>
int convert_sequence(PyObject* object, void** result) {
    Sequence* sequence = nullptr;
    int const status = swig::traits_asptr_stdseq<Sequence>::asptr(object, &sequence);
    *result = sequence;
    return status;
}

template <class Converted>
void release_converted(void* result) {
    delete static_cast<Converted*>(result);
}
template <class Sequence>
inline constexpr Conversion sequence_argument = {convert_sequence<Sequence>, release_converted<Sequence>};

// The conversion of a wrapped iterator into a native one of the Sequence.
template <class Sequence>
int convert_iterator(PyObject* object, void** result) {
    void* pointer = nullptr;
    if (SWIG_Python_ConvertPtrAndOwn(object, &pointer, swig::SwigPyIterator::descriptor()) != SWIG_OK)
        return SWIG_TypeError;
    auto const* iterator = dynamic_cast<swig::SwigPyIterator_T<swig::Position<Sequence>> const*>(
        static_cast<swig::SwigPyIterator*>(pointer));
    if (!iterator)
        return SWIG_TypeError;
    *result = new typename Sequence::iterator(iterator->get_current().native());
    return SWIG_NEWOBJ;
}
template <class Sequence>
inline constexpr Conversion iterator_argument = {convert_iterator<Sequence>,
                                                 release_converted<typename Sequence::iterator>};

// For FINISHED: owned objects of a class that no proxy class stands for are deleted all the same.
template <class Object>
PyObject* destroy_unregistered(PyObject* result, Call const&) {
    runtime::set_destroyer(descriptor<Object>(), release_converted<Object>);
    return result;
}

// For FINISHED: a result that points into self keeps self's Python object alive.
PyObject* keep_container(PyObject* result, Call const& call) noexcept;

// For FINISHED: the same for what may point into an element.
PyObject* keep_element_part(PyObject* result, Call const& call) noexcept;

template <class Vector>
containers::Storage storage_of(Call const& call) noexcept {
    auto* const vector = static_cast<Vector*>(call.slots[0].pointer);
    return {vector, vector->data(), vector->size() * sizeof(typename Vector::value_type)};
}

// For FINISHED: a view of an element keeps the vector's Python object alive and follows the element.
template <class Vector>
PyObject* keep_element(PyObject* result, Call const& call) noexcept {
    PyObject* const kept = keep_container(result, call);
    SwigPyObject* const view = kept ? SWIG_Python_GetSwigThis(kept) : nullptr;
    if (view && view->own != 1)
        containers::watch(storage_of<Vector>(call), view);
    return kept;
}

// For FINISHED: the views of elements follow what the call has done to the vector.
template <class Vector>
PyObject* move_elements(PyObject* result, Call const& call) noexcept {
    containers::follow(storage_of<Vector>(call));
    return result;
}

inline PyObject* swap_elements(PyObject* result, Call const& call) noexcept {
    containers::exchange(call.slots[0].pointer, call.slots[1].pointer);
    return result;
}

inline PyObject* forget_elements(PyObject* result, Call const& call) noexcept {
    containers::forget(call.slots[0].pointer);
    return result;
}

// For FINISHED: a result that is self under another proxy keeps the object that owns it alive.
PyObject* keep_owner(PyObject* result, Call const& call) noexcept;

// For FINISHED: an iterator keeps its sequence's Python object, the first argument, alive.
PyObject* hold_sequence(PyObject* result, Call const& call) noexcept;

// For FINISHED: both, for an operation whose result is an iterator.
template <class Vector>
PyObject* hold_moved_sequence(PyObject* result, Call const& call) noexcept {
    return hold_sequence(move_elements<Vector>(result, call), call);
}

// For GUARDED: swig::stop_iteration is StopIteration; std::invalid_argument is raised as the Python class registered
// for it, or RuntimeError, with its text and around a copy of it.
void translate_iterator_exception();

} // namespace vocabulary
