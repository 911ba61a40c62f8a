// What every director shares: the Python object it forwards to, who owns it, and the exceptions of failed forwarding.
//
// A director is a native object whose virtual functions call the Python method of the same name on `swig_self`. The
// override always calls by name. Where Python does not override the method, the look-up finds the proxy's own method,
// whose wrapper sees that it was called by the director's own Python object and runs the native implementation (the
// upcall rule): that is what ends the recursion.
//
// Life: at first the Python object owns the native one and the director only borrows `swig_self`. After disowning,
// the director holds one reference to `swig_self` until it is destroyed. A Python object that goes although the native
// library still holds the director leaves a plain native object behind, and so does the end of the interpreter. Every
// call must come on the thread that holds the interpreter.
#pragma once

#include "binding/runtime/reference.h"

#include <Python.h>

#include <exception>
#include <map>
#include <memory>
#include <string>

namespace Swig {

// Any failure of a call into Python. Sets the Python error unless one is already set.
class DirectorException : public std::exception {
public:
    DirectorException(PyObject* error, char const* hdr, char const* msg);

    char const* what() const noexcept override { return swig_msg.c_str(); }

    // Throws one with RuntimeError and exactly this text.
    [[noreturn]] static void raise(char const* msg);

private:
    std::string swig_msg;
};

// A Python override raised.
class DirectorMethodException : public DirectorException {
public:
    using DirectorException::DirectorException;
    [[noreturn]] static void raise(char const* msg);
};

// A Python override returned a value of the wrong type.
class DirectorTypeMismatchException : public DirectorException {
public:
    using DirectorException::DirectorException;
    [[noreturn]] static void raise(PyObject* error, char const* msg);
};

// A native object that a director keeps alive.
struct GCItem {
    virtual ~GCItem() = default;
};

using GCItem_var = std::unique_ptr<GCItem>;

class Director {
public:
    explicit Director(PyObject* self) noexcept;
    Director(Director const&) = delete;
    Director& operator=(Director const&) = delete;
    virtual ~Director();
    virtual bool swig_get_inner(char const* name) const;
    virtual void swig_set_inner(char const* name, bool value) const;

    // Borrowed. NULL when there never was one, and when it is gone.
    PyObject* swig_get_self() const noexcept { return swig_is_gone() ? nullptr : swig_self; }

    // Whether the Python object has died or the interpreter has ended: then only the native implementation is left.
    bool swig_is_gone() const noexcept;
    // Takes one reference to the Python object, for good.
    void swig_disown() noexcept;

private:
    PyObject* swig_self; // borrowed until disowned
    bool swig_disown_flag = false;
    runtime::KeptReference swig_kept; // swig_self, once disowned
    std::map<void*, GCItem_var> swig_owner;
    runtime::KeptReference swig_watch; // weak reference to swig_self; empty where it does not support them
};

} // namespace Swig
