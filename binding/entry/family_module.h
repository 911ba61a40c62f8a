// What all extension modules of the family do when they are imported.
#pragma once

#include "binding/vocabulary/record_table.h"

#include <Python.h>

namespace entry {

// One module: its name, and what its dict gets besides the functions. Its rows are those that were linked into it.
struct Contents {
    char const* name;
    // Fills the module's dict; false with an error set fails the import. May be NULL.
    bool (*install)(PyObject* dict);
};

// Makes and returns the module; NULL with an error set. Called once per import by PyInit_NAME.
PyObject* initialise(Contents const& contents) noexcept;

} // namespace entry
