// What integer constants are declared with, and how a table of them is installed.
#pragma once

#include "runtime/global_variables.h"

#include <cstddef>

namespace runtime {

struct Constant {
    const char *name;
    long value;
};

template <std::size_t N> void install_constants(PyObject *dict, Constant const (&table)[N])
{
    for (Constant const &constant : table)
        SWIG_Python_SetConstant(dict, constant.name, PyLong_FromLong(constant.value));
}

} // namespace runtime
