// The call that every overridden function of a director makes: the Python method of the same name, with converted
// arguments, and what becomes of its failure.
#pragma once

#include "binding/directors/director.h"
#include "binding/runtime/pointers.h"

#include <array>

namespace Swig {

// One overridable method. Lives for the process, since it keeps its name as a Python string.
struct DirectorMethod {
    char const* class_name; // of the Python proxy
    char const* name;
    char const* qualified; // reporting form: the name under which failures are registered; NULL: raising form
    bool of_frame = false; // one of the calls of a frame or step, which end with the first error that is set
    PyObject* text = nullptr;
};

// Native arguments as new Python objects.
inline runtime::Reference to_python(bool value) {
    return runtime::Reference::take(PyBool_FromLong(value));
}

inline runtime::Reference to_python(int value) {
    return runtime::Reference::take(PyLong_FromLong(value));
}

inline runtime::Reference to_python(unsigned int value) {
    return runtime::Reference::take(PyLong_FromSize_t(value));
}

inline runtime::Reference to_python(double value) {
    return runtime::Reference::take(PyFloat_FromDouble(value));
}

// Where set, sees each proxy that to_python makes, which it takes over, and may give another instead.
inline PyObject* (*shown_by)(PyObject* proxy) = nullptr;

// A proxy of this type that does not own the object.
runtime::Reference to_python(void* object, swig_type_info* type);

// The Python object of one call, which the call itself must not let go.
class Callee {
public:
    explicit Callee(Director const& director) noexcept
        : self_(runtime::Reference::share(director.swig_get_self())), gone_(!self_ && director.swig_is_gone()) {}

    // Whether only the native implementation is left.
    bool is_gone() const noexcept { return gone_; }

    // NULL where there never was one.
    PyObject* self() const noexcept { return self_.get(); }

private:
    runtime::Reference const self_;
    bool const gone_;
};

// Calls the method with arguments[0], which is self, to arguments[count]. Returns the result, or nothing
// after a failure in the reporting form. A Python error that was pending before is kept aside and left pending; the
// methods of a frame are not called then. The
// method may have destroyed the director: nothing of it may be touched afterwards.
runtime::Reference call_python(Callee const& callee, DirectorMethod& method, PyObject** arguments, std::size_t count);

template <class... A>
runtime::Reference call_python(Callee const& callee, DirectorMethod& method, A const&... arguments) {
    std::array<PyObject*, sizeof...(A) + 1> slots{callee.self(), arguments.get()...};
    return call_python(callee, method, slots.data(), sizeof...(A));
}

[[noreturn]] void raise_no_bool(char const* signature);

// The bool that a Python method returned; false after a failure. `signature` names the native function.
// Throws DirectorTypeMismatchException for any other object.
inline bool to_bool(runtime::Reference const& result, char const* signature) {
    if (result && !PyBool_Check(result.get())) [[unlikely]]
        raise_no_bool(signature);
    return result.get() == Py_True;
}

} // namespace Swig
