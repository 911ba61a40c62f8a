// Names the Python exception for each native one.
#include "binding/vocabulary/guards.h"

#include "binding/directors/director.h"
#include "platform/hyx/objects/notify.h"

#include <Python.h>

#include <exception>
#include <stdexcept>
#include <string>

namespace {

void set_error(PyObject* type, char const* text) {
    if (!PyErr_Occurred())
        PyErr_SetString(type, text);
}

} // namespace

void vocabulary::translate_native_exception() {
    try {
        throw;
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
