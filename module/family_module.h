// What all extension modules of the family do when they are imported.
#pragma once

#include "wrappers/vocabulary/record_table.h"

#include <Python.h>

namespace module {

// One module: its name, its rows, and what its dict gets besides the functions.
struct Contents {
    const char *name;
    wrappers::Rows const *const *areas;
    std::size_t area_count;
    // Fills the module's dict; false with an error set fails the import. May be NULL.
    bool (*install)(PyObject *dict);
};

// Makes and returns the module; NULL with an error set. Called once per import by PyInit_NAME.
PyObject *initialise(Contents const &contents) noexcept;

} // namespace module
