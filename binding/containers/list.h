// A native vector as Python's list, where nothing else is stated: every index and slice rule is the list's own,
// elements come out as copies, and all changes are checked. Positions that do not exist throw std::out_of_range, slices
// that do not fit std::invalid_argument.
#pragma once

#include "binding/containers/sequence.h"

#include <osg/ref_ptr>

#include <type_traits>
#include <utility>

namespace swig {

// How an element crosses: values are copied both ways.
template <class Element>
struct ListElement {
    using Argument = std::conditional_t<std::is_arithmetic_v<Element>, Element, Element const&>;
    using Result = Element;

    static Result out(Element element) { return element; }
};

// Shared objects cross as pointers; the results are for SHARED.
template <class Object>
struct ListElement<osg::ref_ptr<Object>> {
    using Argument = Object*;
    using Result = Object*;

    static Result out(osg::ref_ptr<Object> const& element) { return element.get(); }

    // The last holder may give its object up here: it lives on without a reference.
    static Result out(osg::ref_ptr<Object>&& element) { return element.release(); }
};

template <class List>
struct ListMethods {
    using Base = SequenceMethods<List>;
    using Element = ListElement<typename List::value_type>;
    using Argument = typename Element::Argument;
    using Result = typename Element::Result;
    using difference_type = typename List::difference_type;

    static bool is_filled(List const& self) { return !self.empty(); }

    static std::size_t length(List const& self) { return self.size(); }

    static Result get_item(List const& self, difference_type i) { return Element::out(Base::get_item(self, i)); }

    static List* get_slice(List& self, SWIGPY_SLICEOBJECT* slice) {
        SliceIndices at;
        return at.read(slice, self) ? getslice(&self, at.start, at.stop, at.step, PastEnd::nothing) : nullptr;
    }

    static void set_item(List& self, difference_type i, Argument x) { self[check_index(i, self.size())] = x; }

    static void set_slice(List& self, SWIGPY_SLICEOBJECT* slice, List const& v) { Base::set_slice(self, slice, v); }

    static void append(List& self, Argument x) { self.push_back(x); }

    static Result pop(List& self) {
        if (self.empty())
            throw std::out_of_range("pop from empty container");
        return pop_at(self, -1);
    }

    static Result pop_at(List& self, difference_type i) {
        auto const place = self.begin() + static_cast<difference_type>(check_index(i, self.size()));
        auto taken = std::move(*place);
        self.erase(place);
        return Element::out(std::move(taken));
    }

    // Before the element at i; an index outside means the nearer end.
    static void insert(List& self, difference_type i, Argument x) {
        auto const size = static_cast<difference_type>(self.size());
        self.insert(self.begin() + std::clamp<difference_type>(i < 0 ? i + size : i, 0, size),
                    typename List::value_type(x));
    }

    static void extend(List& self, List const& more) { self.insert(self.end(), more.begin(), more.end()); }

    static void clear(List& self) { self.clear(); }
};

} // namespace swig
