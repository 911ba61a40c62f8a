// Lists of colours: the same sequence as every other native vector.
#include "binding/containers/sequence.h"
#include "binding/vocabulary/rows.h"
#include "binding/vocabulary/sequences.h"
#include "platform/hyxRender/color.h"

namespace swig {

template <>
struct traits<hyxRender::Color> {
    static constexpr char type_name[] = "hyxRender::Color";
};

template <>
struct traits<hyxRender::ColorVector> {
    static constexpr char type_name[] = "hyxRender::ColorVector";
};

} // namespace swig

namespace vocabulary {

template <>
inline constexpr Conversion const* sequence_conversion<hyxRender::ColorVector> =
    &sequence_argument<hyxRender::ColorVector>;

} // namespace vocabulary

namespace {

using Methods = swig::SequenceMethods<hyxRender::ColorVector>;

void clear(hyxRender::ColorVector& self) {
    self.clear();
}

#define ELEMENT(...) FINISHED(::vocabulary::keep_container, CONTAINER(__VA_ARGS__))

constexpr Declared color_vector_rows[] = {
    FUNCTION(new_ColorVector, NEW(hyxRender::ColorVector, ()),
             NEW(hyxRender::ColorVector, (hyxRender::ColorVector const&))),
    FUNCTION(delete_ColorVector, DELETE(hyxRender::ColorVector)),
    FUNCTION(ColorVector___iter__, OWNED(FINISHED(::vocabulary::hold_sequence,
                                                  ADAPTER(hyxRender::ColorVector, __iter__, Methods::iterate, ())))),
    FUNCTION(ColorVector___bool__, ADAPTER(hyxRender::ColorVector, __bool__, Methods::is_filled, () const)),
    FUNCTION(ColorVector___len__, ADAPTER(hyxRender::ColorVector, __len__, Methods::length, () const)),
    FUNCTION(ColorVector___getitem__,
             OWNED(CONTAINER(ADAPTER(hyxRender::ColorVector, __getitem__, Methods::get_slice, (SWIGPY_SLICEOBJECT*)))),
             ELEMENT(ADAPTER(hyxRender::ColorVector, __getitem__, Methods::get_item, (ptrdiff_t) const))),
    FUNCTION(ColorVector___setitem__,
             CONTAINER(ADAPTER(hyxRender::ColorVector, __setitem__, Methods::set_slice,
                               (SWIGPY_SLICEOBJECT*, hyxRender::ColorVector const&))),
             CONTAINER(ADAPTER(hyxRender::ColorVector, __setitem__, Methods::set_item,
                               (ptrdiff_t, hyxRender::Color const&)))),
    FUNCTION(ColorVector___delitem__,
             CONTAINER(ADAPTER(hyxRender::ColorVector, __delitem__, Methods::delete_item, (ptrdiff_t))),
             CONTAINER(ADAPTER(hyxRender::ColorVector, __delitem__, Methods::delete_slice, (SWIGPY_SLICEOBJECT*)))),
    FUNCTION(ColorVector_append, ADAPTER(hyxRender::ColorVector, append, Methods::append, (hyxRender::Color const&))),
    FUNCTION(ColorVector_pop, CONTAINER(ADAPTER(hyxRender::ColorVector, pop, Methods::pop, ()))),
    FUNCTION(ColorVector_clear, ADAPTER(hyxRender::ColorVector, clear, clear, ())),
    REGISTER(hyxRender::ColorVector, ColorVector),
    INIT(ColorVector),
};

} // namespace

ROWS(color_vector_rows);
