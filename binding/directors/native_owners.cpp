// Counts a director's native owners, and holds its Python object from the first to the last.
#include "binding/directors/native_owners.h"

namespace Swig {

NativeOwners::~NativeOwners() {
    if (!Py_IsInitialized())
        static_cast<void>(self_.release());
}

void NativeOwners::enter(Owner owner, PyObject* self) noexcept {
    owners_ |= owner;
    self_ = runtime::Reference::share(self);
}

void NativeOwners::leave(Owner owner) noexcept {
    owners_ &= ~unsigned(owner);
    if (owners_ != 0)
        return;
    runtime::Reference const last = std::exchange(self_, {}); // this object may end with it
}

} // namespace Swig
