// Conversion between Python objects and native pointers, and who owns what afterwards.
//
// A native pointer lives in a SwigPyObject. A proxy instance keeps its SwigPyObject in the attribute "this". The
// conversions return a status code of status.h and never raise.
#pragma once

#include "binding/runtime/pointer_object.h"
#include "binding/runtime/status.h"
#include "binding/runtime/type_records.h"

#include <Python.h>

enum class PointerConversion {
    general,   // None is a NULL pointer
    reference, // None is SWIG_NullReferenceError
    disowning, // as general, and the object that matched stops owning its pointer
};

enum class PointerResult {
    owned_bare,       // constructor results
    owned_proxied,    // new objects
    borrowed_proxied, // pointers to objects owned elsewhere
};

// The pointer object inside an object (borrowed): itself, or its attribute "this", followed through nested proxies.
// NULL (no error pending) when there is none.
SwigPyObject* SWIG_Python_GetSwigThis(PyObject* object) noexcept;

// Stores in *ptr (unless NULL) the pointer of obj as type ty; ty NULL takes the pointer as it is. *own (unless NULL)
// receives the bits of SwigOwnership; for None it is not touched.
int SWIG_Python_ConvertPtrAndOwn(PyObject* obj, void** ptr, swig_type_info* ty,
                                 PointerConversion how = PointerConversion::general, int* own = nullptr) noexcept;

// Stores in *ptr the function that a native function object publishes in its doc string, or the pointer that a
// wrapped object holds. 0 or -1.
int SWIG_Python_ConvertFunctionPtr(PyObject* obj, void** ptr, swig_type_info* ty) noexcept;

// A new reference to a Python object for the pointer; None for NULL.
PyObject* SWIG_Python_NewPointerObj(void* ptr, swig_type_info* ty, PointerResult how) noexcept;

namespace runtime {

// One pointer object as type ty, without following its chain. Returns false when it does not convert.
bool convert_handle(SwigPyObject* handle, swig_type_info* ty, void** ptr, int* newmemory = nullptr) noexcept;

// Whether object's pointer object points into another object's memory.
bool holds_lent(PyObject* object) noexcept;

// Leaves no pointer in object's pointer objects to a native object of type ty that has been deleted.
void forget_deleted(PyObject* object, void const* pointer, swig_type_info* ty) noexcept;

} // namespace runtime
