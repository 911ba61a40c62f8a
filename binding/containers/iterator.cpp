// The iterator's operations that do not depend on the sequence.
#include "binding/containers/iterator.h"

#include <memory>

namespace swig {

SwigPyIterator::~SwigPyIterator() = default;

void SwigPyIterator::hold(PyObject* sequence) {
    SwigPyObject* const pointer_object = SWIG_Python_GetSwigThis(sequence);
    sequence_ = SwigPtr_PyObject::share(sequence);
    pointer_object_ = SwigPtr_PyObject::share(reinterpret_cast<PyObject*>(pointer_object));
    watch(pointer_object);
}

SwigPyIterator* SwigPyIterator::decr(std::size_t) {
    throw stop_iteration();
}

std::ptrdiff_t SwigPyIterator::distance(SwigPyIterator const&) const {
    throw std::invalid_argument("operation not supported");
}

bool SwigPyIterator::equal(SwigPyIterator const&) const {
    throw std::invalid_argument("operation not supported");
}

PyObject* SwigPyIterator::next() {
    auto element = SwigPtr_PyObject::take(value());
    incr();
    return element.release();
}

PyObject* SwigPyIterator::previous() {
    decr();
    return value();
}

SwigPyIterator* SwigPyIterator::advance(std::ptrdiff_t n) {
    // The most negative number has no positive counterpart, so the sign is changed unsigned.
    return n > 0 ? incr(static_cast<std::size_t>(n)) : decr(std::size_t(0) - static_cast<std::size_t>(n));
}

SwigPyIterator& SwigPyIterator::operator-=(std::ptrdiff_t n) {
    return n < 0 ? *incr(std::size_t(0) - static_cast<std::size_t>(n)) : *decr(static_cast<std::size_t>(n));
}

SwigPyIterator* SwigPyIterator::operator+(std::ptrdiff_t n) const {
    std::unique_ptr<SwigPyIterator> moved(copy());
    moved->advance(n);
    return moved.release();
}

SwigPyIterator* SwigPyIterator::operator-(std::ptrdiff_t n) const {
    std::unique_ptr<SwigPyIterator> moved(copy());
    *moved -= n;
    return moved.release();
}

swig_type_info* SwigPyIterator::descriptor() {
    static swig_type_info* const info = runtime::required_type("swig::SwigPyIterator *");
    return info;
}

} // namespace swig
