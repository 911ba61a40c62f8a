// The pointer that keeps a shared object alive.
#pragma once

#include <utility>

namespace hyx {

/// Holds one reference to a shared object, or null.
template <class T>
class ref_ptr {
public:
    ref_ptr() = default;

    ref_ptr(T* object) : m_object(object) {
        if (m_object)
            m_object->reference();
    }

    ref_ptr(ref_ptr const& other) : ref_ptr(other.m_object) {}

    ref_ptr(ref_ptr&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}

    template <class Other>
    ref_ptr(ref_ptr<Other> const& other) : ref_ptr(other.get()) {}

    ~ref_ptr() {
        if (m_object)
            m_object->unreference();
    }

    ref_ptr& operator=(ref_ptr other) noexcept {
        std::swap(m_object, other.m_object);
        return *this;
    }

    T* get() const { return m_object; }

    T* operator->() const { return m_object; }

    T& operator*() const { return *m_object; }

    explicit operator bool() const { return m_object != nullptr; }

    operator T*() const { return m_object; }

    bool valid() const { return m_object != nullptr; }

    /// Gives the object away without deleting it, even when this was its only holder.
    T* release() {
        if (m_object)
            m_object->unreferenceWithoutDelete();
        return std::exchange(m_object, nullptr);
    }

private:
    T* m_object = nullptr;
};

} // namespace hyx
