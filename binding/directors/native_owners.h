// Which native owners have a director. While there is one, it keeps the director's Python object alive, so that a
// listener may be added and forgotten; when the last one has let go, the object lives by its Python references alone.
// Disowning is beside this: it keeps the object until the director is destroyed.
#pragma once

#include "binding/runtime/reference.h"

namespace Swig {

class NativeOwners {
public:
    enum Owner : unsigned { simulation = 1, component = 2, application = 4 };

    NativeOwners() = default;
    NativeOwners(NativeOwners const&) = delete;
    NativeOwners& operator=(NativeOwners const&) = delete;

    void enter(Owner owner, PyObject* self) noexcept;
    // May drop the last reference to the Python object, and so destroy the director.
    void leave(Owner owner) noexcept;

private:
    unsigned owners_ = 0;
    runtime::KeptReference self_; // empty without an owner
};

} // namespace Swig
