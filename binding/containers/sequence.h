// A native vector as Python's sequence: what the rows of such a class call. Positions that do not exist throw
// std::out_of_range, slices that do not fit std::invalid_argument.
#pragma once

#include "binding/containers/iterator.h"
#include "binding/containers/slices.h"

#include <Python.h>

#include <cstdint>
#include <memory>

// A Python slice among native parameters; never defined.
struct SWIGPY_SLICEOBJECT;

namespace swig {

// Start, stop and step of a slice: negative positions are counted from the end, nothing is cut to the sequence.
struct SliceIndices {
    Py_ssize_t start = 0;
    Py_ssize_t stop = 0;
    Py_ssize_t step = 1;

    // False with a Python error set when they are no integers or the step is 0.
    template <class Sequence>
    bool read(SWIGPY_SLICEOBJECT* slice, Sequence const& sequence) {
        // This can run Python code, so the size is asked for afterwards.
        if (PySlice_Unpack(reinterpret_cast<PyObject*>(slice), &start, &stop, &step) < 0)
            return false;
        auto const size = static_cast<Py_ssize_t>(sequence.size());
        start += start < 0 ? size : 0;
        stop += stop < 0 ? size : 0;
        return true;
    }
};

template <class Sequence>
struct SequenceMethods {
    using value_type = typename Sequence::value_type;
    using size_type = typename Sequence::size_type;
    using difference_type = typename Sequence::difference_type;
    using iterator = typename Sequence::iterator;

    static bool is_filled(Sequence const& self) { return !self.empty(); }

    static size_type length(Sequence const& self) { return self.size(); }

    using allocator_type = typename Sequence::allocator_type;

    static allocator_type get_allocator(Sequence const& self) { return self.get_allocator(); }

    static SwigPyIterator* iterate(Sequence& self) {
        return make_output_iterator(At(self, 0), At(self, 0), At::live_end(self));
    }

    static SwigPyIterator* begin(Sequence& self) { return make_output_iterator(At(self, 0)); }

    static SwigPyIterator* end(Sequence& self) { return make_output_iterator(At(self, self.size())); }

    static SwigPyIterator* rbegin(Sequence& self) {
        return make_output_iterator(Position<Sequence, true>(self, self.size()));
    }

    static SwigPyIterator* rend(Sequence& self) { return make_output_iterator(Position<Sequence, true>(self, 0)); }

    static value_type const& get_item(Sequence const& self, difference_type i) {
        return self[check_index(i, self.size())];
    }

    static void set_item(Sequence& self, difference_type i, value_type const& x) {
        self[check_index(i, self.size())] = x;
    }

    static void delete_item(Sequence& self, difference_type i) {
        self.erase(self.begin() + static_cast<difference_type>(check_index(i, self.size())));
    }

    static Sequence* get_range(Sequence& self, difference_type i, difference_type j) {
        return getslice(&self, i, j, 1);
    }

    static void clear_range(Sequence& self, difference_type i, difference_type j) { setslice(&self, i, j, 1); }

    static void set_range(Sequence& self, difference_type i, difference_type j, Sequence const& v) {
        setslice(&self, i, j, 1, v);
    }

    static void delete_range(Sequence& self, difference_type i, difference_type j) { delslice(&self, i, j, 1); }

    // With a slice that cannot be read these do nothing: the Python error is the result.
    static Sequence* get_slice(Sequence& self, SWIGPY_SLICEOBJECT* slice) {
        SliceIndices at;
        return at.read(slice, self) ? getslice(&self, at.start, at.stop, at.step) : nullptr;
    }

    static void set_slice(Sequence& self, SWIGPY_SLICEOBJECT* slice, Sequence const& v) {
        SliceIndices at;
        if (at.read(slice, self))
            setslice(&self, at.start, at.stop, at.step, v);
    }

    static void delete_slice(Sequence& self, SWIGPY_SLICEOBJECT* slice) {
        SliceIndices at;
        if (at.read(slice, self))
            delslice(&self, at.start, at.stop, at.step);
    }

    static void append(Sequence& self, value_type const& x) { self.push_back(x); }

    static value_type pop(Sequence& self) {
        if (self.empty())
            throw std::out_of_range("pop from empty container");
        auto last = self.back();
        self.pop_back();
        return last;
    }

    static void pop_back(Sequence& self) { pop(self); }

    static value_type const& front(Sequence const& self) { return get_item(self, 0); }

    static value_type const& back(Sequence const& self) { return get_item(self, -1); }

    static void assign(Sequence& self, size_type n, value_type const& x) { self.assign(n, value_type(x)); }

    static SwigPyIterator* erase(Sequence& self, iterator pos) {
        require_position(self, pos, self.size());
        return at(self, self.erase(pos));
    }

    static SwigPyIterator* erase_range(Sequence& self, iterator first, iterator last) {
        require_position(self, last, self.size() + 1);
        require_position(self, first, static_cast<size_type>(last - self.begin()) + 1);
        return at(self, self.erase(first, last));
    }

    static SwigPyIterator* insert(Sequence& self, iterator pos, value_type const& x) {
        require_position(self, pos, self.size() + 1);
        return at(self, self.insert(pos, x));
    }

    static void insert_copies(Sequence& self, iterator pos, size_type n, value_type const& x) {
        require_position(self, pos, self.size() + 1);
        self.insert(pos, n, x);
    }

private:
    using At = Position<Sequence>;

    static SwigPyIterator* at(Sequence& self, iterator place) {
        return make_output_iterator(At(self, static_cast<std::size_t>(place - self.begin())));
    }

    // Iterators can be of another sequence, or past its ends. Only the first `limit` positions are
    // good.
    static void require_position(Sequence& self, iterator pos, size_type limit) {
        auto const address = reinterpret_cast<std::uintptr_t>(std::to_address(pos));
        auto const offset = address - reinterpret_cast<std::uintptr_t>(self.data());
        if (offset % sizeof(value_type) != 0 || offset / sizeof(value_type) >= limit)
            throw std::out_of_range("iterator out of range");
    }
};

} // namespace swig
