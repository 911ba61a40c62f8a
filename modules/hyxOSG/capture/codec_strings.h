// Access to the linked map from codec to encoder name, for "cvar" and the flat functions alike.
#pragma once

#include <Python.h>

namespace modules {

// A pointer object for the live map: changes through it reach the library.
PyObject* get_codec_strings();

// Assigns a copy of a wrapped map; 0, or 1 with an error set. NULL (deletion) is refused like a wrong type.
int set_codec_strings(PyObject* value);

} // namespace modules
