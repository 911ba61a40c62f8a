// A row of a family module's method table, reached from the flat function that Python sees.
#pragma once

#include "binding/vocabulary/record_table.h"

#include <Python.h>

#include <utility>

namespace proxy {

PyObject* show(PyObject* result, PyObject* owner); // see shown.h

using vocabulary::Form;
using vocabulary::Function;
using vocabulary::ModuleDefinition;
using vocabulary::RecordTable;

// What messages call an operation, and what its callers call its arguments.
struct Spoken {
    enum class Kind { operation, constructor, member };

    PyObject* name;
    PyObject* owner_name; // the qualified name of the class, or None at package level
    PyObject* parameters; // a tuple with a str a form, such as "radius, color=hyx.Vec4(1, 1, 1, 1)"; or None
    Kind kind;
    std::size_t leading; // how many arguments lie before those that have names: the object, or a director's own
};

struct Row;

// Adds the errors below to the support module. False with an error set.
bool add_errors(PyObject* module);

// Turns a pending RuntimeError, as the flat functions leave it, into what Python's own functions would raise: of what
// the system refused FileNotFoundError, PermissionError and so on, with the RuntimeError as its cause; of a value
// ArgumentError, of a place PlaceError. Any other error stays.
void raise_as_python();

// What a call gives that the row did not take as it stands: one with keywords (their names as in a vector call), with a
// wrong count, or one that has just failed, with its error set. Tries it with what Python's users write for native
// values (sequences of numbers for vectors, NumPy's scalars, paths); then says in Python's words what is wrong.
PyObject* recover(Row const& row, Spoken const& spoken, PyObject* const* arguments, Py_ssize_t count,
                  PyObject* keyword_names);

// What it takes to run one row without an argument tuple.
struct Row {
    Function const* function;
    PyObject* (*run)(Function const*, PyObject* const*, Py_ssize_t);
    Py_ssize_t exact_count; // the only count the row takes directly; -1: the row checks its counts itself
    bool shows;             // may give objects that are somebody else's, too
    vocabulary::Shower* shower;
    bool has_self;  // the first argument is the object that the row is called on
    PyObject* flat; // owned
    RecordTable const* records;

    // `arguments` are borrowed; the result is a new reference, or null with the error set.
    PyObject* call(Spoken const& spoken, PyObject* const* arguments, Py_ssize_t count) const {
        if (exact_count >= 0 && count != exact_count) [[unlikely]]
            return recover(*this, spoken, arguments, count, nullptr);
        PyObject* const result = showing(arguments, count, [&] { return run(function, arguments, count); });
        if (!result || result == Py_NotImplemented) [[unlikely]]
            return after(result, spoken);
        return result;
    }

    // Runs `call`, which has these arguments, and shows what it gives as proxies.
    template <class Call>
    PyObject* showing(PyObject* const* arguments, Py_ssize_t count, Call call) const {
        if (!shows)
            return call();
        PyObject* const* const before = std::exchange(shower->arguments, arguments);
        PyObject* result = call();
        shower->arguments = before;
        return result && result != Py_None ? show(result, has_self && count > 0 ? arguments[0] : nullptr) : result;
    }

private:
    // Arguments and count are in the refusal.
    PyObject* after(PyObject* result, Spoken const& spoken) const;
};

// Fills `row` from a flat function. False with TypeError set when `flat` is no function of a family module.
[[nodiscard]] bool find_row(PyObject* flat, Row& row);

// The definition behind a module of the family, or null with TypeError set.
[[nodiscard]] ModuleDefinition const* find_definition(PyObject* module);

} // namespace proxy
