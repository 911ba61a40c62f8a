// What the proxies ask of the call machinery when a call has failed.
#pragma once

#include "binding/vocabulary/record_table.h"

namespace vocabulary {

extern Refusal refusal;

// Calls one form, whatever others there are; `count` lies between its minimum and maximum.
PyObject* call_one_form(Form const* form, PyObject* const* arguments, Py_ssize_t count);

// The native prototypes of a function as failure messages list them: a new str.
PyObject* prototypes(Function const* function);

} // namespace vocabulary
