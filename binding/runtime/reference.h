// Holders of one strong Python reference: for code of the binding, and for native objects.
#pragma once

#include <Python.h>

#include <memory>
#include <utility>

namespace runtime {

// Owns one reference, or none. Every owned reference of the binding that outlives one expression lives in one.
class Reference {
public:
    Reference() noexcept = default;

    // Takes over a new reference; NULL (a failed call) makes an empty holder.
    static Reference take(PyObject* object) noexcept { return Reference(object); }

    // Adds a reference to a borrowed object.
    static Reference share(PyObject* object) noexcept {
        Py_XINCREF(object);
        return Reference(object);
    }

    Reference(Reference const& other) noexcept : object_(other.object_) { Py_XINCREF(object_); }

    Reference(Reference&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}

    Reference& operator=(Reference other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }

    ~Reference() { Py_XDECREF(object_); }

    PyObject* get() const noexcept { return object_; }

    // Hands the reference to the caller.
    [[nodiscard]] PyObject* release() noexcept { return std::exchange(object_, nullptr); }

    explicit operator bool() const noexcept { return object_ != nullptr; }

private:
    explicit Reference(PyObject* object) noexcept : object_(object) {}

    PyObject* object_ = nullptr;
};

// A Python object that native objects hold, in std::function and the like. Copies share the one reference. Native
// objects may outlive the interpreter: then the reference is left alone, and `alive` says so.
class KeptReference {
public:
    KeptReference() noexcept = default;

    // Adds a reference to a borrowed object, or holds nothing for NULL.
    explicit KeptReference(PyObject* object) : kept_(object ? Py_NewRef(object) : nullptr, &drop) {}

    // Takes over what a holder has.
    explicit KeptReference(Reference object) : kept_(object.release(), &drop) {}

    PyObject* get() const noexcept { return kept_.get(); }

    explicit operator bool() const noexcept { return kept_ != nullptr; }

    static bool alive() noexcept { return Py_IsInitialized(); }

private:
    static void drop(PyObject* object) noexcept {
        if (alive())
            Py_XDECREF(object);
    }

    std::shared_ptr<PyObject> kept_;
};

// Sets the pending Python error aside and puts it back when destroyed.
class SavedError {
public:
    SavedError() noexcept { PyErr_Fetch(&type_, &value_, &traceback_); }

    SavedError(SavedError const&) = delete;
    SavedError& operator=(SavedError const&) = delete;

    ~SavedError() { PyErr_Restore(type_, value_, traceback_); }

private:
    PyObject* type_ = nullptr;
    PyObject* value_ = nullptr;
    PyObject* traceback_ = nullptr;
};

} // namespace runtime
