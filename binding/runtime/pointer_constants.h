// Constants that are pointers or packed bytes, installed under their names and published in method doc strings.
#pragma once

#include "binding/runtime/type_records.h"

#include <Python.h>

enum SwigConstantKind : int {
    SWIG_PY_POINTER = 4, // pvalue is the pointer
    SWIG_PY_BINARY = 5,  // pvalue points at lvalue bytes
};

namespace runtime {

// What a doc string has before the pointer, or the name of the constant, that it refers to.
inline constexpr char pointer_reference[] = "swig_ptr: ";

} // namespace runtime

struct swig_const_info {
    int type; // SwigConstantKind; 0 ends the table
    char const* name;
    long lvalue;
    double dvalue;
    void* pvalue;
    swig_type_info** ptype; // slot of the live type array
};

// Writes the pointers of constants into the doc strings that refer to them by "swig_ptr: NAME". The type table need
// not be linked yet.
void SWIG_Python_FixMethods(PyMethodDef* methods, swig_const_info const* constants) noexcept;

// Stores every constant in the module's dict. A row whose object cannot be made is skipped.
void SWIG_Python_InstallConstants(PyObject* dict, swig_const_info const* constants) noexcept;
