// Counts a director's native owners, and holds its Python object from the first to the last.
#include "binding/directors/native_owners.h"

namespace Swig {

void NativeOwners::enter(Owner owner, PyObject* self) noexcept {
    owners_ |= owner;
    self_ = runtime::KeptReference(self);
}

void NativeOwners::leave(Owner owner) noexcept {
    owners_ &= ~unsigned(owner);
    if (owners_ != 0)
        return;
    runtime::KeptReference const last = std::exchange(self_, {}); // this object may end with it
}

} // namespace Swig
