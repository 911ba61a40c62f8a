// A row of a family module's method table, reached from the flat function that Python sees.
#pragma once

#include "binding/vocabulary/record_table.h"

#include <Python.h>

#include <utility>

namespace proxy {

PyObject* show(PyObject* result, PyObject* owner); // see shown.h

using vocabulary::Function;
using vocabulary::ModuleDefinition;

// Turns a pending RuntimeError that says what the system refused (as the flat functions leave it) into the OSError that
// Python's own functions would raise, FileNotFoundError, PermissionError and so on, with the RuntimeError as its cause.
// Any other error stays.
void speak_of_files();

// What it takes to run one row without an argument tuple. `flat` is the module's own function; it is
// kept for the calls that the row cannot take directly (keywords, wrong counts), so that their messages
// are the flat function's own.
struct Row {
    Function const* function;
    PyObject* (*run)(Function const*, PyObject* const*, Py_ssize_t);
    Py_ssize_t exact_count; // the only count the row takes directly; -1: the row checks its counts itself
    bool shows;             // may give objects that are somebody else's, too
    vocabulary::Shower* shower;
    bool has_self;  // the first argument is the object that the row is called on
    PyObject* flat; // owned

    // `arguments` are borrowed; the result is a new reference, or null with the error set.
    PyObject* call(PyObject* const* arguments, Py_ssize_t count) const {
        if (exact_count >= 0 && count != exact_count) [[unlikely]]
            return call_flat(arguments, count, nullptr);
        PyObject* result;
        if (!shows) {
            result = run(function, arguments, count);
        } else {
            PyObject* const* const before = std::exchange(shower->arguments, arguments);
            result = run(function, arguments, count);
            shower->arguments = before;
            result = shown(result, arguments, count);
        }
        if (!result) [[unlikely]]
            speak_of_files();
        return result;
    }

    [[gnu::noinline]] PyObject* call_flat(PyObject* const* arguments, Py_ssize_t count, PyObject* keyword_names) const {
        PyObject* result = PyObject_Vectorcall(flat, arguments, static_cast<std::size_t>(count), keyword_names);
        if (shows)
            result = shown(result, arguments, count);
        if (!result) [[unlikely]]
            speak_of_files();
        return result;
    }

private:
    PyObject* shown(PyObject* result, PyObject* const* arguments, Py_ssize_t count) const {
        return result && result != Py_None ? show(result, has_self && count > 0 ? arguments[0] : nullptr) : result;
    }
};

// Fills `row` from a flat function. False with TypeError set when `flat` is no function of a family module.
[[nodiscard]] bool find_row(PyObject* flat, Row& row);

// The definition behind a module of the family, or null with TypeError set.
[[nodiscard]] ModuleDefinition const* find_definition(PyObject* module);

} // namespace proxy
