// How the proxy support reaches the records behind a module's flat functions: the module's definition is the first
// member of a larger record.
#pragma once

#include "binding/vocabulary/record.h"

#include <Python.h>

#include <cstdint>

namespace vocabulary {

// Why the last call that failed did so. The proxies, which take more than the flat functions do, try some calls again.
struct Refusal {
    bool by_arguments; // nothing native was called, and no code of the user's own has raised
    int argument;      // the one that did not convert; -1 for a wrong count, and where no form fits
    // Of the call, valid until its caller goes on: who asks only after a failure need not keep them through the call.
    PyObject* const* arguments;
    Py_ssize_t count;
};

inline constexpr std::uint64_t record_table_magic = 0x31534452'4f434552; // "RECORDS1" in memory order

struct RecordTable {
    std::size_t count;
    Function const* const* functions; // functions[i] is row i of the method table
    // Runs a row like the flat function, from an argument array without a tuple.
    PyObject* (*call)(Function const* function, PyObject* const* arguments, Py_ssize_t count);
    // The same with one of its forms; `count` lies between the form's minimum and maximum.
    PyObject* (*call_form)(Form const* form, PyObject* const* arguments, Py_ssize_t count);
    Refusal const* refusal;
    // The native prototypes of a function, a new str in the layout of failure messages.
    PyObject* (*prototypes)(Function const* function);
    // The module's descriptors, by index.
    swig_type_info* const* types;
    // A new pointer object that borrows.
    PyObject* (*borrow)(void* object, swig_type_info* type);
    Shower* shower;
    // Where set, sees each object that a director shows to Python, and may replace it.
    PyObject* (**show)(PyObject* object);
    // A new list of dicts, one a function: names, forms, types, defaults, results.
    PyObject* (*describe)();
};

struct ModuleDefinition {
    PyModuleDef def; // first: PyModule_GetDef returns its address
    std::uint64_t magic;
    RecordTable const* records;
};

} // namespace vocabulary
