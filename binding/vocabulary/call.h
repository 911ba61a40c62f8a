// The shared machinery of all wrapped functions: unpacking, conversion, choice among forms, the guarded call.
#pragma once

#include "binding/vocabulary/record.h"

namespace vocabulary {

// The most arguments of any form, self included.
inline constexpr std::size_t most_arguments = 16;

// Entries of the method table, one for each calling convention.
PyObject* call_no_argument(Function const& function);
PyObject* call_one_argument(Function const& function, PyObject* argument);
PyObject* call_tuple(Function const& function, PyObject* arguments);

// The same call from an argument array, without a tuple. Wrong counts raise the function's own message.
PyObject* call_array(Function const* function, PyObject* const* arguments, Py_ssize_t count);

} // namespace vocabulary
