// Errors of calls in the words of Python's own.
#pragma once

#include "python/support/row.h"

namespace proxy {

// "GeometryNode.setAutoRemove()", "Text()" for a constructor, "CameraData.eye" for a member: a new str.
PyObject* spoken_name(Spoken const& spoken);

// Raises `type` with "<name> <text>" and the native prototypes of the row. `cause` (owned, or null) becomes the error's
// cause. `text` is owned.
void speak(Row const& row, Spoken const& spoken, PyObject* type, PyObject* text, PyObject* cause);

// The texts for `speak`, each a new str.
// One argument: "argument 1 'radius' must be float, not str". `name` is borrowed, or null.
PyObject* argument_text(Row const& row, Spoken const& spoken, Form const& form, int argument, PyObject* name,
                        PyObject* given, bool out_of_range, int leading);
// Whether an object is none that the form's methods can be called on: of another class, or without a native one.
bool is_wrong_self(Row const& row, Form const& form, PyObject* given);
// "takes 2 or 3 arguments (1 given)"; neither counts what lies before the native arguments.
PyObject* count_text(Function const& function, int leading, Py_ssize_t given);
// "has no form for (int, radius=str)".
PyObject* no_form_text(PyObject* const* arguments, Py_ssize_t count, PyObject* keyword_names, int leading);

} // namespace proxy
