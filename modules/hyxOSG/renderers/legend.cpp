#include "binding/containers/sequence.h"
#include "modules/hyxOSG/renderers/legend_arguments.h"
#include "binding/vocabulary/rows.h"

namespace {

using Methods = swig::SequenceMethods<hyxOSG::LidarOutputRendererLegend>;

// A view of an element.
#define ELEMENT(...) FINISHED(::vocabulary::keep_container, CONTAINER(__VA_ARGS__))
// An iterator.
#define POSITION(...) OWNED(FINISHED(::vocabulary::hold_sequence, CONTAINER(__VA_ARGS__)))

// clang-format off: the parameter lists are the texts of messages and prototypes.
constexpr Declared functions[] = {
    FUNCTION(LidarOutputRendererLegend_iterator,
        POSITION(ADAPTER(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, iterator, Methods::iterate, ()))),
    FUNCTION(LidarOutputRendererLegend___nonzero__,
        CONTAINER(ADAPTER(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, __nonzero__, Methods::is_filled, () const))),
    FUNCTION(LidarOutputRendererLegend___bool__,
        CONTAINER(ADAPTER(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, __bool__, Methods::is_filled, () const))),
    FUNCTION(LidarOutputRendererLegend___len__,
        CONTAINER(ADAPTER(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, __len__, Methods::length, () const))),
    FUNCTION(LidarOutputRendererLegend___getslice__,
        OWNED(CONTAINER(ADAPTER(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, __getslice__, Methods::get_range, (std::vector< hyxOSG::LidarOutputRendererLegendPoint >::difference_type, std::vector< hyxOSG::LidarOutputRendererLegendPoint >::difference_type))))),
    FUNCTION(LidarOutputRendererLegend___setslice__,
        CONTAINER(ADAPTER(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, __setslice__, Methods::clear_range, (std::vector< hyxOSG::LidarOutputRendererLegendPoint >::difference_type, std::vector< hyxOSG::LidarOutputRendererLegendPoint >::difference_type))),
        CONTAINER(ADAPTER(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, __setslice__, Methods::set_range, (std::vector< hyxOSG::LidarOutputRendererLegendPoint >::difference_type, std::vector< hyxOSG::LidarOutputRendererLegendPoint >::difference_type, std::vector< hyxOSG::LidarOutputRendererLegendPoint,std::allocator< hyxOSG::LidarOutputRendererLegendPoint > > const &)))),
    FUNCTION(LidarOutputRendererLegend___delslice__,
        CONTAINER(ADAPTER(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, __delslice__, Methods::delete_range, (std::vector< hyxOSG::LidarOutputRendererLegendPoint >::difference_type, std::vector< hyxOSG::LidarOutputRendererLegendPoint >::difference_type)))),
    FUNCTION(LidarOutputRendererLegend___delitem__,
        CONTAINER(ADAPTER(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, __delitem__, Methods::delete_item, (std::vector< hyxOSG::LidarOutputRendererLegendPoint >::difference_type))),
        CONTAINER(ADAPTER(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, __delitem__, Methods::delete_slice, (SWIGPY_SLICEOBJECT *)))),
    FUNCTION(LidarOutputRendererLegend___getitem__,
        OWNED(CONTAINER(ADAPTER(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, __getitem__, Methods::get_slice, (SWIGPY_SLICEOBJECT *)))),
        ELEMENT(ADAPTER(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, __getitem__, Methods::get_item, (std::vector< hyxOSG::LidarOutputRendererLegendPoint >::difference_type) const))),
    FUNCTION(LidarOutputRendererLegend___setitem__,
        CONTAINER(ADAPTER(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, __setitem__, Methods::set_slice, (SWIGPY_SLICEOBJECT *, std::vector< hyxOSG::LidarOutputRendererLegendPoint,std::allocator< hyxOSG::LidarOutputRendererLegendPoint > > const &))),
        CONTAINER(ADAPTER(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, __setitem__, Methods::delete_slice, (SWIGPY_SLICEOBJECT *))),
        CONTAINER(ADAPTER(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, __setitem__, Methods::set_item, (std::vector< hyxOSG::LidarOutputRendererLegendPoint >::difference_type, std::vector< hyxOSG::LidarOutputRendererLegendPoint >::value_type const &)))),
    FUNCTION(LidarOutputRendererLegend_pop,
        CONTAINER(ADAPTER(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, pop, Methods::pop, ()))),
    FUNCTION(LidarOutputRendererLegend_append,
        CONTAINER(ADAPTER(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, append, Methods::append, (std::vector< hyxOSG::LidarOutputRendererLegendPoint >::value_type const &)))),
    FUNCTION(LidarOutputRendererLegend_push_back,
        CONTAINER(METHOD(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, push_back, (std::vector< hyxOSG::LidarOutputRendererLegendPoint >::value_type const &)))),
    FUNCTION(LidarOutputRendererLegend_empty,
        CONTAINER(METHOD(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, empty, () const))),
    FUNCTION(LidarOutputRendererLegend_size,
        CONTAINER(METHOD(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, size, () const))),
    FUNCTION(LidarOutputRendererLegend_capacity,
        CONTAINER(METHOD(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, capacity, () const))),
    FUNCTION(LidarOutputRendererLegend_reserve,
        CONTAINER(METHOD(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, reserve, (std::vector< hyxOSG::LidarOutputRendererLegendPoint >::size_type)))),
    FUNCTION(LidarOutputRendererLegend_clear,
        CONTAINER(METHOD(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, clear, ()))),
    FUNCTION(LidarOutputRendererLegend_swap,
        CONTAINER(METHOD(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, swap, (std::vector< hyxOSG::LidarOutputRendererLegendPoint > &)))),
    FUNCTION(LidarOutputRendererLegend_begin,
        POSITION(ADAPTER(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, begin, Methods::begin, ()))),
    FUNCTION(LidarOutputRendererLegend_end,
        POSITION(ADAPTER(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, end, Methods::end, ()))),
    FUNCTION(LidarOutputRendererLegend_get_allocator,
        CONTAINER(ADAPTER(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, get_allocator, Methods::get_allocator, () const))),
    FUNCTION(LidarOutputRendererLegend_pop_back,
        CONTAINER(ADAPTER(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, pop_back, Methods::pop_back, ()))),
    FUNCTION(LidarOutputRendererLegend_erase,
        POSITION(ADAPTER(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, erase, Methods::erase, (std::vector< hyxOSG::LidarOutputRendererLegendPoint >::iterator))),
        POSITION(ADAPTER(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, erase, Methods::erase_range, (std::vector< hyxOSG::LidarOutputRendererLegendPoint >::iterator, std::vector< hyxOSG::LidarOutputRendererLegendPoint >::iterator)))),
    FUNCTION(LidarOutputRendererLegend_front,
        ELEMENT(ADAPTER(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, front, Methods::front, () const))),
    FUNCTION(LidarOutputRendererLegend_back,
        ELEMENT(ADAPTER(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, back, Methods::back, () const))),
    FUNCTION(LidarOutputRendererLegend_assign,
        CONTAINER(ADAPTER(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, assign, Methods::assign, (std::vector< hyxOSG::LidarOutputRendererLegendPoint >::size_type, std::vector< hyxOSG::LidarOutputRendererLegendPoint >::value_type const &)))),
    FUNCTION(LidarOutputRendererLegend_resize,
        CONTAINER(METHOD(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, resize, (std::vector< hyxOSG::LidarOutputRendererLegendPoint >::size_type))),
        CONTAINER(METHOD(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, resize, (std::vector< hyxOSG::LidarOutputRendererLegendPoint >::size_type, std::vector< hyxOSG::LidarOutputRendererLegendPoint >::value_type const &)))),
    FUNCTION(LidarOutputRendererLegend_insert,
        POSITION(ADAPTER(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, insert, Methods::insert, (std::vector< hyxOSG::LidarOutputRendererLegendPoint >::iterator, std::vector< hyxOSG::LidarOutputRendererLegendPoint >::value_type const &))),
        CONTAINER(ADAPTER(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, insert, Methods::insert_copies, (std::vector< hyxOSG::LidarOutputRendererLegendPoint >::iterator, std::vector< hyxOSG::LidarOutputRendererLegendPoint >::size_type, std::vector< hyxOSG::LidarOutputRendererLegendPoint >::value_type const &)))),
    FUNCTION(LidarOutputRendererLegend_rbegin,
        POSITION(ADAPTER(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, rbegin, Methods::rbegin, ()))),
    FUNCTION(LidarOutputRendererLegend_rend,
        POSITION(ADAPTER(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, rend, Methods::rend, ()))),
    FUNCTION(new_LidarOutputRendererLegend,
        CONTAINER(NEW(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, ())),
        CONTAINER(NEW(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, (std::vector< hyxOSG::LidarOutputRendererLegendPoint > const &))),
        CONTAINER(NEW(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, (std::vector< hyxOSG::LidarOutputRendererLegendPoint >::size_type))),
        CONTAINER(NEW(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, (std::vector< hyxOSG::LidarOutputRendererLegendPoint >::size_type, std::vector< hyxOSG::LidarOutputRendererLegendPoint >::value_type const &)))),
    FUNCTION(delete_LidarOutputRendererLegend, DELETE(std::vector< hyxOSG::LidarOutputRendererLegendPoint >)),
    REGISTER(std::vector< hyxOSG::LidarOutputRendererLegendPoint >, LidarOutputRendererLegend),
    INIT(LidarOutputRendererLegend),
};
// clang-format on

}

ROWS(functions);
