// The singletons of this module's copy of the runtime. Each is NULL or zero until first use; only
// SWIG_Python_DestroyModule releases them.
#pragma once

#include "binding/runtime/type_records.h"

#include <Python.h>

extern PyObject* Swig_This_global;      // the string "this"
extern PyObject* Swig_TypeCache_global; // dict: query text -> capsule of a descriptor
extern PyObject* Swig_Capsule_global;   // the chain's capsule, where this module published it
extern PyObject* Swig_Globals_global;   // the object stored as "cvar"
extern int interpreter_counter;         // how often this module published the chain
extern swig_module_info swig_module;    // this module's type table
// The live descriptors: swig_module.types. Written out per module by the type catalogue.
extern swig_type_info* swig_types[];
// This module's own descriptors, sorted by name, and their initial cast lists.
extern swig_type_info* swig_type_initial[];
extern swig_cast_info* swig_cast_initial[];

// Borrowed; created on first use.
PyObject* SWIG_This() noexcept;
PyObject* SWIG_Python_TypeCache() noexcept;
