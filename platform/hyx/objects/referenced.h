// The count of references that shared objects live by.
#pragma once

#include "platform/hyx/objects/ref_ptr.h"

#include <atomic>

namespace hyx {

/// The base of shared objects. An object starts with no references and ends with its last one; nobody deletes it by
/// hand.
class Referenced {
public:
    Referenced() = default;

    Referenced(Referenced const&) {}

    Referenced& operator=(Referenced const&) { return *this; }

    void reference() const { m_references.fetch_add(1, std::memory_order_relaxed); }

    /// Drops one reference; the last one deletes the object.
    void unreference() const {
        if (m_references.fetch_sub(1, std::memory_order_acq_rel) == 1)
            delete this;
    }

    /// Drops one reference without ever deleting, for handing out an object that a local holder made.
    void unreferenceWithoutDelete() const { m_references.fetch_sub(1, std::memory_order_acq_rel); }

    /// How many owners the object has.
    int getReferenceCount() const { return m_references.load(std::memory_order_acquire); }

protected:
    virtual ~Referenced() = default;

private:
    mutable std::atomic<int> m_references{0};
};

} // namespace hyx
