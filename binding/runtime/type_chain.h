// The chain of type tables: publication, linking, look-ups by name, and casts along inheritance.
//
// Every module of the family owns one swig_module_info. The first one to be imported publishes its record in a
// capsule; later ones splice theirs into the circular chain behind it. A type that an earlier module knows keeps that
// module's descriptor, so a pointer's descriptor identifies its type across modules.
#pragma once

#include "binding/runtime/type_records.h"

#include <Python.h>

inline constexpr char chain_capsule_name[] = "swig_runtime_data4.type_pointer_capsule";

// The head of the published chain, or NULL (no error is left pending).
swig_module_info* SWIG_Python_GetModuleChain() noexcept;

// Links swig_module into the chain, or publishes it where there is none. initial holds this module's descriptors
// sorted by name, casts their initial cast lists.
void SWIG_InitializeModule(swig_type_info** initial, swig_cast_info** casts) noexcept;

// Capsule destructor: tears the published table down when its last publication goes away.
void SWIG_Python_DestroyModule(PyObject* capsule);

// The descriptor of a mangled name among the modules from start up to, not including, end (start == end: all).
swig_type_info* SWIG_Python_QueryMangled(swig_module_info* start, swig_module_info* end, char const* name) noexcept;

// The descriptor of a mangled or readable name, or NULL. Hits are cached.
swig_type_info* SWIG_Python_TypeQuery(char const* name) noexcept;

// The entry of target's list whose source type has this name, moved to the front of the list; NULL if there is none.
swig_cast_info* SWIG_Python_FindCast(char const* source, swig_type_info* target) noexcept;

// Converts a pointer. *newmemory is set to 2 by a converter that made a new object.
inline void* SWIG_Python_ApplyCast(swig_cast_info const* cast, void* pointer, int* newmemory) {
    return cast->converter ? cast->converter(pointer, newmemory) : pointer;
}

// Attaches proxy-class data to a type and to every type that is the same class under another name.
void SWIG_TypeClientData(swig_type_info* type, void* clientdata) noexcept;
// The same, and the type owns the data.
void SWIG_TypeAdoptClientData(swig_type_info* type, void* clientdata) noexcept;

// The last spelling of the readable name; "unknown" where there is none.
char const* SWIG_Python_PrettyTypeName(swig_type_info const* type) noexcept;

namespace runtime {

// SWIG_Python_FindCast by descriptor, which also remembers failures: a type that did not convert is not searched for
// again until another module joins the chain.
swig_cast_info* find_cast(swig_type_info const* source, swig_type_info* target) noexcept;

// The descriptor of a mangled or readable name as this module means it: of its own types, and only where it has none of
// that name, of another module's. NULL where nobody has one.
swig_type_info* known_type(char const* name) noexcept;

// The same for a type that this module lists. Never NULL, which would stand for any type: without one, a descriptor
// that nothing converts to.
swig_type_info* required_type(char const* name) noexcept;

} // namespace runtime
