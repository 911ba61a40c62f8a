// The Python object that carries one native pointer with its type and ownership.
#pragma once

#include "binding/runtime/type_records.h"

#include <Python.h>

#include <utility>

// Read by sibling modules in this order after the object header.
struct SwigPyObject {
    PyObject_HEAD void* ptr; // the native object
    swig_type_info* ty;      // its descriptor, may be NULL
    std::int32_t own;        // exactly 1: Python deletes the native object with this one
    std::int32_t mark;       // lent or used, see below; undefined in siblings
    PyObject* next;          // further views of the same Python instance, owned; may be NULL
};

static_assert(offsetof(SwigPyObject, ptr) == 16);
static_assert(offsetof(SwigPyObject, ty) == 24);
static_assert(offsetof(SwigPyObject, own) == 32);
static_assert(offsetof(SwigPyObject, next) == 40);
static_assert(sizeof(SwigPyObject) == 48);

inline constexpr char pointer_object_type_name[] = "swig_runtime_data4.SwigPyObject";

// The type object (borrowed), created on first use and kept for the life of the process.
PyTypeObject* SwigPyObject_type() noexcept;

namespace runtime {

// Whether the type's instances are pointer objects: this module's, or a sibling's, which have the same name and layout.
bool is_pointer_type(PyTypeObject* type) noexcept;

// The views of one Python instance in turn. A ring of views ends where it closes.
class Views {
public:
    explicit Views(SwigPyObject* first) noexcept : current_(first), seen_(first) {}

    SwigPyObject* get() const noexcept { return current_; }

    void advance() noexcept {
        current_ = reinterpret_cast<SwigPyObject*>(current_->next);
        if (current_ == seen_)
            current_ = nullptr;
        else if (++steps_ == limit_) {
            seen_ = current_;
            limit_ *= 2;
        }
    }

private:
    SwigPyObject* current_;
    SwigPyObject* seen_; // met earlier; renewed at every power of two
    std::size_t steps_ = 0;
    std::size_t limit_ = 2;
};

// Deletes objects of a type that no proxy class registers a destroy function for.
void set_destroyer(swig_type_info* type, void (*destroy)(void*));

// Whether the object is one of SwigPyObject_CreateView, which keeps its container alive; told to view_ended, where that
// is set, at its end.
bool is_view(SwigPyObject const* object) noexcept;
inline void (*view_ended)(SwigPyObject* view) = nullptr;

// Marks what points into another object's memory: nobody can own it.
void lend(PyObject* pointer_object) noexcept;
bool is_lent(PyObject* pointer_object) noexcept;

// Holds the pointer object of an object that a call uses while code of the user runs: meanwhile nobody may delete the
// native one. Calls nest.
class Use {
public:
    explicit Use(SwigPyObject* pointer_object = nullptr) noexcept;
    Use(Use const&) = delete;

    Use(Use&& other) noexcept
        : object_(std::exchange(other.object_, nullptr)), marked_(std::exchange(other.marked_, false)) {}

    Use& operator=(Use other) noexcept {
        std::swap(object_, other.object_);
        std::swap(marked_, other.marked_);
        return *this;
    }

    ~Use();

    // From now on the native object may be deleted; its pointer object is held on.
    void let_end() noexcept;

private:
    SwigPyObject* object_;
    bool marked_ = false;
};

bool is_used(SwigPyObject const* pointer_object) noexcept;

} // namespace runtime

// True for pointer objects of this module and, by type name, of its siblings.
bool SwigPyObject_Recognise(PyObject* object) noexcept;

// A new bare pointer object. An owned one keeps the published type table alive.
PyObject* SwigPyObject_Create(void* ptr, swig_type_info* ty, int own) noexcept;

// The same, not owned, for memory inside of another object, whose Python object it keeps alive.
PyObject* SwigPyObject_CreateView(void* ptr, swig_type_info* ty, PyObject* container) noexcept;

// Inserts other right after self in self's chain of views; None, or NULL with TypeError for a foreign object.
PyObject* SwigPyObject_append(PyObject* self, PyObject* other) noexcept;
