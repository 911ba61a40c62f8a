#pragma once

#include <atomic>
#include <utility>

namespace hyx {

/// The base of shared objects. An object starts with no references and ends with its last one; nobody deletes it by hand.
class Referenced {
public:
  Referenced() = default;
  Referenced(Referenced const &) {}
  Referenced & operator=(Referenced const &) { return *this; }

  void reference() const { m_references.fetch_add(1, std::memory_order_relaxed); }
  /// Drops one reference; the last one deletes the object.
  void unreference() const {
    if (m_references.fetch_sub(1, std::memory_order_acq_rel) == 1)
      delete this;
  }
  /// Drops one reference without ever deleting, for handing out an object that a local holder made.
  void unreferenceWithoutDelete() const { m_references.fetch_sub(1, std::memory_order_acq_rel); }
  int getReferenceCount() const { return m_references.load(std::memory_order_acquire); }

protected:
  virtual ~Referenced() = default;

private:
  mutable std::atomic<int> m_references{0};
};

/// Holds one reference to a shared object, or null.
template <class T>
class ref_ptr {
public:
  ref_ptr() = default;
  ref_ptr(T * object) : m_object(object) {
    if (m_object)
      m_object->reference();
  }
  ref_ptr(ref_ptr const & other) : ref_ptr(other.m_object) {}
  ref_ptr(ref_ptr && other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
  template <class Other>
  ref_ptr(ref_ptr<Other> const & other) : ref_ptr(other.get()) {}
  ~ref_ptr() {
    if (m_object)
      m_object->unreference();
  }
  ref_ptr & operator=(ref_ptr other) noexcept {
    std::swap(m_object, other.m_object);
    return *this;
  }

  T * get() const { return m_object; }
  T * operator->() const { return m_object; }
  T & operator*() const { return *m_object; }
  explicit operator bool() const { return m_object != nullptr; }
  operator T *() const { return m_object; }
  bool valid() const { return m_object != nullptr; }

  /// Gives the object away without deleting it, even when this was its only holder.
  T * release() {
    if (m_object)
      m_object->unreferenceWithoutDelete();
    return std::exchange(m_object, nullptr);
  }

private:
  T * m_object = nullptr;
};

}
