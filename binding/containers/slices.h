// The index and slice rules of native sequences. They follow Python's lists except for one thing, which a sequence can
// choose: reading a slice that starts at or behind the end counts from the front, so v[len(v):] is a copy of the whole
// sequence.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <iterator>
#include <stdexcept>

namespace swig {

// The position of an index that may count from the end. Throws std::out_of_range.
inline std::size_t check_index(std::ptrdiff_t i, std::size_t size) {
    auto const length = static_cast<std::ptrdiff_t>(size);
    auto const position = i < 0 ? i + length : i;
    if (position < 0 || position >= length)
        throw std::out_of_range("index out of range");
    return static_cast<std::size_t>(position);
}

// Cuts start i and stop j to the sequence and stores them in ii and jj, which the caller has set to 0. insert: the
// slice is assigned to or deleted, not read. Throws std::invalid_argument for step 0.
inline void slice_adjust(std::ptrdiff_t i, std::ptrdiff_t j, std::ptrdiff_t step, std::size_t size, std::ptrdiff_t& ii,
                         std::ptrdiff_t& jj, bool insert) {
    auto const length = static_cast<std::ptrdiff_t>(size);
    if (step == 0)
        throw std::invalid_argument("slice step cannot be zero");
    if (step > 0) {
        if (i < 0)
            ii = 0;
        else if (i < length)
            ii = i;
        else if (insert)
            ii = length;
        jj = std::max(std::clamp<std::ptrdiff_t>(j, 0, length), ii);
    } else {
        ii = i < length ? std::max<std::ptrdiff_t>(i, -1) : length - 1;
        jj = j < length ? std::max<std::ptrdiff_t>(j, -1) : length - 1;
        ii = std::max(ii, jj);
    }
}

// A slice cut to a sequence: `count` positions from `first`, `step` apart.
struct SliceRange {
    std::ptrdiff_t first;
    std::ptrdiff_t step;
    std::size_t count;

    std::ptrdiff_t position(std::size_t n) const { return first + static_cast<std::ptrdiff_t>(n) * step; }
};

inline SliceRange slice_range(std::ptrdiff_t i, std::ptrdiff_t j, std::ptrdiff_t step, std::size_t size, bool insert) {
    std::ptrdiff_t ii = 0;
    std::ptrdiff_t jj = 0;
    slice_adjust(i, j, step, size, ii, jj, insert);
    // The widths are taken as unsigned: a step may be as small or as large as the type allows.
    auto const width = static_cast<std::size_t>(step > 0 ? jj - ii : ii - jj);
    auto const stride = step > 0 ? static_cast<std::size_t>(step) : std::size_t(0) - static_cast<std::size_t>(step);
    return {ii, step, width / stride + (width % stride != 0)};
}

// What a slice gives that is read from behind the end.
enum class PastEnd {
    front,   // the elements from the front up to its stop
    nothing, // as with Python's lists
};

// A new sequence with copies of the slice.
template <class Sequence>
Sequence* getslice(Sequence const* self, std::ptrdiff_t i, std::ptrdiff_t j, std::ptrdiff_t step,
                   PastEnd past_end = PastEnd::front) {
    auto const range = slice_range(i, j, step, self->size(), past_end == PastEnd::nothing);
    if (step == 1) {
        auto const from = self->begin() + range.first;
        return new Sequence(from, from + static_cast<std::ptrdiff_t>(range.count));
    }
    Sequence slice;
    slice.reserve(range.count);
    for (std::size_t n = 0; n < range.count; ++n)
        slice.push_back((*self)[static_cast<std::size_t>(range.position(n))]);
    return new Sequence(std::move(slice));
}

namespace detail {

// Replaces a run of elements; the sequence may grow or shrink.
template <class Sequence>
void replace_run(Sequence& self, std::ptrdiff_t first, std::size_t count, Sequence const& v) {
    auto const from = self.begin() + first;
    if (v.size() >= count) {
        auto const rest = std::copy_n(v.begin(), count, from);
        self.insert(rest, v.begin() + static_cast<std::ptrdiff_t>(count), v.end());
    } else {
        self.erase(from, from + static_cast<std::ptrdiff_t>(count));
        self.insert(self.begin() + first, v.begin(), v.end());
    }
}

} // namespace detail

// Puts the elements of v in the slice's place. Throws std::invalid_argument where the slice has gaps and v another
// length.
template <class Sequence>
void setslice(Sequence* self, std::ptrdiff_t i, std::ptrdiff_t j, std::ptrdiff_t step, Sequence const& v = Sequence()) {
    if (self == &v) // inserting a vector into itself would read what it has moved
        return setslice(self, i, j, step, Sequence(v));
    auto const range = slice_range(i, j, step, self->size(), true);
    if (step == 1)
        return detail::replace_run(*self, range.first, range.count, v);
    if (v.size() != range.count) {
        char message[1024];
        std::snprintf(message, sizeof message, "attempt to assign sequence of size %lu to extended slice of size %lu",
                      static_cast<unsigned long>(v.size()), static_cast<unsigned long>(range.count));
        throw std::invalid_argument(message);
    }
    for (std::size_t n = 0; n < range.count; ++n)
        (*self)[static_cast<std::size_t>(range.position(n))] = v[n];
}

// Erases the slice.
template <class Sequence>
void delslice(Sequence* self, std::ptrdiff_t i, std::ptrdiff_t j, std::ptrdiff_t step) {
    auto const range = slice_range(i, j, step, self->size(), true);
    if (step == 1) {
        auto const from = self->begin() + range.first;
        self->erase(from, from + static_cast<std::ptrdiff_t>(range.count));
        return;
    }
    // From the highest position down, so that the positions that follow stay where they are.
    for (std::size_t n = 0; n < range.count; ++n)
        self->erase(self->begin() + range.position(step > 0 ? range.count - 1 - n : n));
}

} // namespace swig
