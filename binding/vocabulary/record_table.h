// How the proxy support reaches the records behind a module's flat functions: the module's definition is the first
// member of a larger record.
#pragma once

#include "binding/vocabulary/record.h"

#include <Python.h>

#include <cstdint>

namespace vocabulary {

inline constexpr std::uint64_t record_table_magic = 0x31534452'4f434552; // "RECORDS1" in memory order

struct RecordTable {
    std::size_t count;
    Function const* const* functions; // functions[i] is row i of the method table
    // Runs a row like the flat function, from an argument array without a tuple.
    PyObject* (*call)(Function const* function, PyObject* const* arguments, Py_ssize_t count);
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
