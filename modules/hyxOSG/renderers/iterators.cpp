// Rows of the iterator that all sequences hand out.
#include "binding/vocabulary/rows.h"
#include "binding/vocabulary/sequences.h"

namespace {

#define ITERATING(...) GUARDED(::vocabulary::translate_iterator_exception, __VA_ARGS__)
#define ITSELF(...) FINISHED(::vocabulary::keep_owner, ITERATING(__VA_ARGS__))

constexpr Declared iterators_rows[] = {
    FUNCTION(delete_SwigPyIterator, DELETE(swig::SwigPyIterator)),
    FUNCTION(SwigPyIterator_value, ITERATING(METHOD(swig::SwigPyIterator, value, () const))),
    FUNCTION(SwigPyIterator_incr, ITSELF(METHOD(swig::SwigPyIterator, incr, (size_t), 1))),
    FUNCTION(SwigPyIterator_decr, ITSELF(METHOD(swig::SwigPyIterator, decr, (size_t), 1))),
    FUNCTION(SwigPyIterator_distance,
             ITERATING(METHOD(swig::SwigPyIterator, distance, (swig::SwigPyIterator const&) const))),
    FUNCTION(SwigPyIterator_equal, ITERATING(METHOD(swig::SwigPyIterator, equal, (swig::SwigPyIterator const&) const))),
    FUNCTION(SwigPyIterator_copy, OWNED(ITERATING(METHOD(swig::SwigPyIterator, copy, () const)))),
    FUNCTION(SwigPyIterator_next, ITERATING(METHOD(swig::SwigPyIterator, next, ()))),
    FUNCTION(SwigPyIterator___next__, ITERATING(METHOD(swig::SwigPyIterator, __next__, ()))),
    FUNCTION(SwigPyIterator_previous, ITERATING(METHOD(swig::SwigPyIterator, previous, ()))),
    FUNCTION(SwigPyIterator_advance, ITSELF(METHOD(swig::SwigPyIterator, advance, (ptrdiff_t)))),
    OPERATOR(SwigPyIterator___eq__,
             ITERATING(METHOD(swig::SwigPyIterator, operator==, (swig::SwigPyIterator const&) const))),
    OPERATOR(SwigPyIterator___ne__,
             ITERATING(METHOD(swig::SwigPyIterator, operator!=, (swig::SwigPyIterator const&) const))),
    FUNCTION(SwigPyIterator___iadd__, ITSELF(METHOD(swig::SwigPyIterator, operator+=, (ptrdiff_t)))),
    FUNCTION(SwigPyIterator___isub__, ITSELF(METHOD(swig::SwigPyIterator, operator-=, (ptrdiff_t)))),
    OPERATOR(SwigPyIterator___add__, OWNED(ITERATING(METHOD(swig::SwigPyIterator, operator+, (ptrdiff_t) const)))),
    OPERATOR(SwigPyIterator___sub__, OWNED(ITERATING(METHOD(swig::SwigPyIterator, operator-, (ptrdiff_t) const))),
             ITERATING(METHOD(swig::SwigPyIterator, operator-, (swig::SwigPyIterator const&) const))),
    REGISTER(swig::SwigPyIterator, SwigPyIterator),
};

} // namespace

ROWS(iterators_rows);
