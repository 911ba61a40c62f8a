// Puts the arguments of a call with keywords in the places of a form.
#pragma once

#include "python/support/row.h"

#include <optional>
#include <vector>

namespace proxy {

// A reference of its own to a Python object, or null.
class Owned {
public:
    Owned() = default;

    explicit Owned(PyObject* object) : object_(object) {}

    Owned(Owned&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}

    Owned& operator=(Owned&& other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }

    ~Owned() { Py_XDECREF(object_); }

    static Owned share(PyObject* object) { return Owned(Py_XNewRef(object)); }

    PyObject* get() const { return object_; }

    PyObject* release() { return std::exchange(object_, nullptr); }

    explicit operator bool() const { return object_ != nullptr; }

private:
    PyObject* object_ = nullptr;
};

struct NamedParameter {
    Owned name;
    Owned fallback; // its default as Python writes it: a str; null for none
};

// The parameters of one form as its text has them, such as "radius, color=hyx.Vec4(1, 1, 1, 1)".
std::vector<NamedParameter> read_parameters(PyObject* text);

// A call's arguments with the names that the form has for them.
struct NamedCall {
    PyObject* const* arguments; // positional ones, then those of the keywords
    Py_ssize_t count;           // of positional arguments
    PyObject* keyword_names;    // a tuple, or null
};

// The arguments in their places, with defaults in the gaps between them. Nothing where the call does not fit the form,
// and with an error set where a default raises one. `leading` arguments lie before those that have names.
std::optional<std::vector<Owned>> bind(Form const& form, std::vector<NamedParameter> const& names, std::size_t leading,
                                       NamedCall const& call);

// Why the call does not fit the only form: a new str, or null where it does as far as names go.
PyObject* misfit(Form const& form, std::vector<NamedParameter> const& names, std::size_t leading,
                 NamedCall const& call);

} // namespace proxy
