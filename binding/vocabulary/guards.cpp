// Names the Python exception for each native one.
#include "binding/vocabulary/guards.h"

#include "binding/directors/director.h"
#include "binding/runtime/reference.h"
#include "binding/runtime/values.h"
#include "platform/hyx/objects/notify.h"

#include <Python.h>

#include <cerrno>
#include <exception>
#include <filesystem>
#include <new>
#include <stdexcept>
#include <string>
#include <system_error>

namespace {

using runtime::Reference;

void set_error(PyObject* type, char const* text) {
    Reference const decoded = PyErr_Occurred() ? Reference() : Reference::take(SWIG_FromCharPtr(text));
    if (decoded)
        PyErr_SetObject(type, decoded.get());
}

bool set_attribute(PyObject* error, char const* name, PyObject* value) {
    bool const set = value && PyObject_SetAttrString(error, name, value) == 0;
    Py_XDECREF(value);
    return set;
}

// RuntimeError with the text; `describe` adds as attributes what the proxies turn it into another type by: what the
// system said, named as in OSError, or the type itself. An error that is set already stays.
template <class Describe>
void set_described_error(char const* text, Describe describe) {
    Reference const decoded = PyErr_Occurred() ? Reference() : Reference::take(SWIG_FromCharPtr(text));
    Reference const error = Reference::take(decoded ? PyObject_CallOneArg(PyExc_RuntimeError, decoded.get()) : nullptr);
    if (error && describe(error.get()))
        PyErr_SetObject(PyExc_RuntimeError, error.get());
}

void set_system_error(std::system_error const& failure, std::string const& path) {
    auto const& category = failure.code().category();
    if (category != std::generic_category() && category != std::system_category())
        return set_error(PyExc_RuntimeError, failure.what());
    set_described_error(failure.what(), [&](PyObject* error) {
        std::string const reason = failure.code().message();
        return set_attribute(error, "errno", PyLong_FromLong(failure.code().value())) &&
               set_attribute(error, "strerror", PyUnicode_DecodeLocale(reason.c_str(), "surrogateescape")) &&
               set_attribute(error, "filename",
                             path.empty() ? Py_NewRef(Py_None) : PyUnicode_DecodeFSDefault(path.c_str()));
    });
}

void set_memory_error(std::bad_alloc const& failure) {
    set_described_error(failure.what(),
                        [](PyObject* error) { return set_attribute(error, "errno", PyLong_FromLong(ENOMEM)); });
}

void set_meant_error(std::exception const& failure, PyObject* type) {
    set_described_error(failure.what(),
                        [&](PyObject* error) { return set_attribute(error, "meant", Py_NewRef(type)); });
}

} // namespace

void vocabulary::translate_native_exception() {
    try {
        throw;
    } catch (std::filesystem::filesystem_error const& error) {
        set_system_error(error, error.path1().string());
    } catch (std::system_error const& error) {
        set_system_error(error, "");
    } catch (std::bad_alloc const& error) {
        set_memory_error(error);
    } catch (std::invalid_argument const& error) {
        set_meant_error(error, PyExc_ValueError);
    } catch (std::out_of_range const& error) {
        set_meant_error(error, PyExc_IndexError);
    } catch (std::exception const& error) {
        set_error(PyExc_RuntimeError, error.what());
    } catch (...) {
        set_error(PyExc_RuntimeError, "Unknown exception");
    }
}

void vocabulary::translate_container_exception() {
    try {
        throw;
    } catch (std::out_of_range const& error) {
        set_error(PyExc_IndexError, error.what());
    } catch (std::invalid_argument const& error) {
        set_error(PyExc_ValueError, error.what());
    } catch (...) {
        translate_native_exception();
    }
}

void vocabulary::translate_director_exception() {
    try {
        throw;
    } catch (Swig::DirectorException const&) {
        // Its constructor has left a Python error.
    } catch (...) {
        translate_native_exception();
    }
}

void vocabulary::report_listener_exception(std::string_view name, int line, std::string_view source) {
    std::string const wrapper = "_wrap_" + std::string(name);
    std::string const place(source);
    try {
        throw;
    } catch (std::exception const& error) {
        hyx::Notify::instance().notify(hyx::Notify::NOTIFY_ERROR, wrapper.c_str(), line, place.c_str(), error.what());
    } catch (...) {
        translate_native_exception();
    }
}
