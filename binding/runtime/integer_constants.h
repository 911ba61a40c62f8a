// What integer constants are declared with, and how a table of them is installed.
#pragma once

#include "binding/runtime/global_variables.h"

#include <cstddef>

namespace runtime {

struct Constant {
    char const* name;
    long value;
};

// Installs the tables one after the other.
template <std::size_t... Sizes>
void install_constants(PyObject* dict, Constant const (&... tables)[Sizes]) {
    auto const install = [dict](auto const& table) {
        for (Constant const& constant : table)
            SWIG_Python_SetConstant(dict, constant.name, PyLong_FromLong(constant.value));
    };
    (install(tables), ...);
}

} // namespace runtime
