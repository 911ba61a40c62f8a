// Python's view of a position in a native sequence.
//
// Life: an iterator keeps its sequence's Python object alive, and counts positions in the sequence as it is, so that it
// follows storage that moves. A sequence that was deleted all the same is an empty one to its iterators. A closed
// iterator stops at both ends of the sequence; an open one, as `begin` and `end` make it, may leave it, and has no
// value there. Failure: running past an end throws stop_iteration, operands that do not fit std::invalid_argument.
#pragma once

#include "binding/containers/element_types.h"
#include "binding/runtime/pointers.h"
#include "binding/runtime/reference.h"

#include <cstddef>
#include <cstdint>
#include <stdexcept>

namespace swig {

// The end signal.
struct stop_iteration {};

using SwigPtr_PyObject = runtime::Reference;

// A position in a sequence, by number: nothing that happens to the sequence makes it point elsewhere. A position past
// an end has no element.
template <class Sequence, bool Reverse = false>
class Position {
public:
    using value_type = typename Sequence::value_type;

    Position(Sequence& sequence, std::size_t index)
        : sequence_(&sequence), index_(static_cast<std::ptrdiff_t>(index)) {}

    // The pointer object of the sequence, which shows its end.
    void watch(SwigPyObject const* pointer_object) { pointer_object_ = pointer_object; }

    // One past the last element, wherever that is.
    static Position live_end(Sequence& sequence) { return Position(sequence, most); }

    value_type const& operator*() const {
        std::ptrdiff_t const at = Reverse ? index() - 1 : index();
        if (at < 0 || at >= size())
            throw stop_iteration();
        return sequence()[static_cast<std::size_t>(at)];
    }

    Position& operator+=(std::ptrdiff_t n) { return Reverse ? back(n) : forth(n); }

    Position& operator-=(std::ptrdiff_t n) { return Reverse ? forth(n) : back(n); }

    std::ptrdiff_t operator-(Position const& other) const {
        return Reverse ? other.index() - index() : index() - other.index();
    }

    bool operator==(Position const& other) const { return sequence_ == other.sequence_ && index() == other.index(); }

    bool operator<(Position const& other) const { return Reverse ? other.index() < index() : index() < other.index(); }

    // For the sequence's own operations, which refuse the iterator that stands for positions outside.
    typename Sequence::iterator native() const {
        bool const inside = index() >= 0 && index() <= size();
        return sequence().begin() + (inside ? index() : size() + 1);
    }

private:
    static constexpr std::ptrdiff_t most = PTRDIFF_MAX;

    Position& forth(std::ptrdiff_t n) {
        if (__builtin_add_overflow(index(), n, &index_))
            index_ = n > 0 ? most - 1 : -most;
        return *this;
    }

    Position& back(std::ptrdiff_t n) {
        if (__builtin_sub_overflow(index(), n, &index_))
            index_ = n < 0 ? most - 1 : -most;
        return *this;
    }

    Sequence& sequence() const {
        static Sequence ended;
        return pointer_object_ && !pointer_object_->ptr ? ended : *sequence_;
    }

    std::ptrdiff_t size() const { return static_cast<std::ptrdiff_t>(sequence().size()); }

    std::ptrdiff_t index() const { return index_ == most ? size() : index_; }

    Sequence* sequence_;
    SwigPyObject const* pointer_object_ = nullptr; // kept by the iterator
    std::ptrdiff_t index_;                         // of the element behind a reverse position
};

class SwigPyIterator {
public:
    virtual ~SwigPyIterator();
    SwigPyIterator& operator=(SwigPyIterator const&) = delete;

    // A new Python object for the current element.
    virtual PyObject* value() const = 0;
    // Moves on by n, in place.
    virtual SwigPyIterator* incr(std::size_t n = 1) = 0;
    // Moves back by n, in place.
    virtual SwigPyIterator* decr(std::size_t n = 1);
    // The number of steps from here to the other.
    virtual std::ptrdiff_t distance(SwigPyIterator const& other) const;
    virtual bool equal(SwigPyIterator const& other) const;
    // A new iterator at the same position, of the same sequence.
    virtual SwigPyIterator* copy() const = 0;

    // Keeps the Python object of the sequence alive as long as this iterator.
    void hold(PyObject* sequence);

    PyObject* next();

    PyObject* __next__() { return next(); }

    PyObject* previous();
    SwigPyIterator* advance(std::ptrdiff_t n);

    SwigPyIterator& operator+=(std::ptrdiff_t n) { return *advance(n); }

    SwigPyIterator& operator-=(std::ptrdiff_t n);
    SwigPyIterator* operator+(std::ptrdiff_t n) const;
    SwigPyIterator* operator-(std::ptrdiff_t n) const;

    std::ptrdiff_t operator-(SwigPyIterator const& other) const { return other.distance(*this); }

    bool operator==(SwigPyIterator const& other) const { return equal(other); }

    bool operator!=(SwigPyIterator const& other) const { return !equal(other); }

    // The descriptor of pointers to iterators; looked up once.
    static swig_type_info* descriptor();

protected:
    SwigPyIterator() = default;
    SwigPyIterator(SwigPyIterator const&) = default;

private:
    virtual void watch(SwigPyObject const* pointer_object) = 0;

    SwigPtr_PyObject sequence_;       // empty for an iterator that native code has made
    SwigPtr_PyObject pointer_object_; // of the sequence
};

template <class OutIter>
class SwigPyIterator_T : public SwigPyIterator {
public:
    explicit SwigPyIterator_T(OutIter current) : current(current) {}

    OutIter const& get_current() const { return current; }

    bool equal(SwigPyIterator const& other) const override { return current == same_class(other).current; }

    std::ptrdiff_t distance(SwigPyIterator const& other) const override { return same_class(other).current - current; }

protected:
    void watch(SwigPyObject const* pointer_object) override { current.watch(pointer_object); }

    OutIter current;

private:
    static SwigPyIterator_T const& same_class(SwigPyIterator const& other) {
        if (auto const* const iterator = dynamic_cast<SwigPyIterator_T const*>(&other))
            return *iterator;
        throw std::invalid_argument("bad iterator type");
    }
};

template <class OutIter, class Value = typename OutIter::value_type, class FromOper = from_oper<Value>>
class SwigPyForwardIteratorOpen_T : public SwigPyIterator_T<OutIter> {
public:
    using SwigPyIterator_T<OutIter>::SwigPyIterator_T;

    PyObject* value() const override { return FromOper()(*this->current); }

    SwigPyIterator* copy() const override { return new SwigPyForwardIteratorOpen_T(*this); }

    SwigPyIterator* incr(std::size_t n = 1) override {
        this->current += static_cast<std::ptrdiff_t>(n);
        return this;
    }
};

template <class OutIter, class Value = typename OutIter::value_type, class FromOper = from_oper<Value>>
class SwigPyIteratorOpen_T : public SwigPyForwardIteratorOpen_T<OutIter, Value, FromOper> {
public:
    using SwigPyForwardIteratorOpen_T<OutIter, Value, FromOper>::SwigPyForwardIteratorOpen_T;

    SwigPyIterator* copy() const override { return new SwigPyIteratorOpen_T(*this); }

    SwigPyIterator* decr(std::size_t n = 1) override {
        this->current -= static_cast<std::ptrdiff_t>(n);
        return this;
    }
};

template <class OutIter, class Value = typename OutIter::value_type, class FromOper = from_oper<Value>>
class SwigPyForwardIteratorClosed_T : public SwigPyIterator_T<OutIter> {
public:
    SwigPyForwardIteratorClosed_T(OutIter current, OutIter first, OutIter last)
        : SwigPyIterator_T<OutIter>(current), begin(first), end(last) {}

    PyObject* value() const override {
        if (!(this->current < end))
            throw stop_iteration();
        return FromOper()(*this->current);
    }

    SwigPyIterator* copy() const override { return new SwigPyForwardIteratorClosed_T(*this); }

    SwigPyIterator* incr(std::size_t n = 1) override {
        while (n--) {
            if (!(this->current < end))
                throw stop_iteration();
            this->current += 1;
        }
        return this;
    }

protected:
    void watch(SwigPyObject const* pointer_object) override {
        for (OutIter* position : {&this->current, &begin, &end})
            position->watch(pointer_object);
    }

    OutIter begin;
    OutIter end;
};

template <class OutIter, class Value = typename OutIter::value_type, class FromOper = from_oper<Value>>
class SwigPyIteratorClosed_T : public SwigPyForwardIteratorClosed_T<OutIter, Value, FromOper> {
public:
    using SwigPyForwardIteratorClosed_T<OutIter, Value, FromOper>::SwigPyForwardIteratorClosed_T;

    SwigPyIterator* copy() const override { return new SwigPyIteratorClosed_T(*this); }

    SwigPyIterator* decr(std::size_t n = 1) override {
        while (n--) {
            if (!(this->begin < this->current))
                throw stop_iteration();
            this->current -= 1;
        }
        return this;
    }
};

// An iterator without bounds, for a position in a native sequence.
template <class OutIter>
SwigPyIterator* make_output_iterator(OutIter current) {
    return new SwigPyIteratorOpen_T<OutIter>(current);
}

// An iterator between two ends.
template <class OutIter>
SwigPyIterator* make_output_iterator(OutIter current, OutIter begin, OutIter end) {
    return new SwigPyIteratorClosed_T<OutIter>(current, begin, end);
}

} // namespace swig
