// What Python's users write for native values that the flat functions do not take.
#pragma once

#include "binding/vocabulary/record_table.h"

#include <Python.h>

namespace proxy {

using vocabulary::Parameter;

// The proxy class (borrowed) of a parameter's native class; null where there is none.
PyTypeObject* class_of(vocabulary::RecordTable const& records, Parameter const& parameter);

// Whether a sequence can stand for the argument: a vector, quaternion, colour, matrix or list that the call only reads.
bool takes_sequence(vocabulary::RecordTable const& records, Parameter const& parameter);

bool is_text(Parameter const& parameter);

// A new reference to what stands for the object as this argument: a vector for a tuple, a list or an array, an int or
// float for a scalar of NumPy's, a str for a path; else the object itself. Null with an error of the user's own code
// set. An object that should have stood for something and does not, as a pair for a vector, gives its error as
// `reason`, a new reference that replaces the one there.
PyObject* adapted(vocabulary::RecordTable const& records, Parameter const& parameter, PyObject* object,
                  PyObject** reason);

} // namespace proxy
