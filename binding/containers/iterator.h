// Python's view of a position in a native sequence.
//
// Life: an iterator keeps its sequence's Python object alive, but does not notice that the sequence's storage has
// moved. A closed iterator knows both ends of the sequence; an open one, as `begin` and `end` make it, does not.
// Failure: running past an end throws stop_iteration, operands that do not fit std::invalid_argument.
#pragma once

#include "binding/containers/element_types.h"
#include "binding/runtime/reference.h"

#include <cstddef>
#include <stdexcept>

namespace swig {

// The end signal.
struct stop_iteration {};

using SwigPtr_PyObject = runtime::Reference;

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
    void hold(PyObject* sequence) { sequence_ = SwigPtr_PyObject::share(sequence); }

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
    SwigPtr_PyObject sequence_; // empty for an iterator that native code has made
};

template <class OutIter>
class SwigPyIterator_T : public SwigPyIterator {
public:
    explicit SwigPyIterator_T(OutIter current) : current(current) {}

    OutIter const& get_current() const { return current; }

    bool equal(SwigPyIterator const& other) const override { return current == same_class(other).current; }

    std::ptrdiff_t distance(SwigPyIterator const& other) const override { return same_class(other).current - current; }

protected:
    OutIter current;

private:
    static SwigPyIterator_T const& same_class(SwigPyIterator const& other) {
        if (auto const* const iterator = dynamic_cast<SwigPyIterator_T const*>(&other))
            return *iterator;
        throw std::invalid_argument("bad iterator type");
    }
};

template <class OutIter, class Value = typename std::iterator_traits<OutIter>::value_type,
          class FromOper = from_oper<Value>>
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

template <class OutIter, class Value = typename std::iterator_traits<OutIter>::value_type,
          class FromOper = from_oper<Value>>
class SwigPyIteratorOpen_T : public SwigPyForwardIteratorOpen_T<OutIter, Value, FromOper> {
public:
    using SwigPyForwardIteratorOpen_T<OutIter, Value, FromOper>::SwigPyForwardIteratorOpen_T;

    SwigPyIterator* copy() const override { return new SwigPyIteratorOpen_T(*this); }

    SwigPyIterator* decr(std::size_t n = 1) override {
        this->current -= static_cast<std::ptrdiff_t>(n);
        return this;
    }
};

template <class OutIter, class Value = typename std::iterator_traits<OutIter>::value_type,
          class FromOper = from_oper<Value>>
class SwigPyForwardIteratorClosed_T : public SwigPyIterator_T<OutIter> {
public:
    SwigPyForwardIteratorClosed_T(OutIter current, OutIter first, OutIter last)
        : SwigPyIterator_T<OutIter>(current), begin(first), end(last) {}

    PyObject* value() const override {
        if (this->current == end)
            throw stop_iteration();
        return FromOper()(*this->current);
    }

    SwigPyIterator* copy() const override { return new SwigPyForwardIteratorClosed_T(*this); }

    SwigPyIterator* incr(std::size_t n = 1) override {
        while (n--) {
            if (this->current == end)
                throw stop_iteration();
            ++this->current;
        }
        return this;
    }

protected:
    OutIter begin;
    OutIter end;
};

template <class OutIter, class Value = typename std::iterator_traits<OutIter>::value_type,
          class FromOper = from_oper<Value>>
class SwigPyIteratorClosed_T : public SwigPyForwardIteratorClosed_T<OutIter, Value, FromOper> {
public:
    using SwigPyForwardIteratorClosed_T<OutIter, Value, FromOper>::SwigPyForwardIteratorClosed_T;

    SwigPyIterator* copy() const override { return new SwigPyIteratorClosed_T(*this); }

    SwigPyIterator* decr(std::size_t n = 1) override {
        while (n--) {
            if (this->current == this->begin)
                throw stop_iteration();
            --this->current;
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
