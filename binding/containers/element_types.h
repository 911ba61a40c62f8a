// How elements of native sequences are named in the type table and handed to Python.
#pragma once

#include "binding/runtime/pointers.h"
#include "binding/runtime/type_chain.h"

#include <string>
#include <vector>

namespace swig {

// Specialised for every element and sequence that crosses: `type_name`, its readable name in the type table.
template <class Type>
struct traits;

template <>
struct traits<std::string> {
    static constexpr char type_name[] = "std::string";
};

template <>
struct traits<std::vector<std::string>> {
    static constexpr char type_name[] = "std::vector<std::string,std::allocator< std::string > >";
};

// The descriptor of pointers to Type; looked up once.
template <class Type>
swig_type_info* type_info() {
    static swig_type_info* const info = runtime::required_type((std::string(traits<Type>::type_name) + " *").c_str());
    return info;
}

// A new Python object for an element: an owned copy, never a view into the sequence.
template <class Type>
struct from_oper {
    PyObject* operator()(Type const& value) const {
        return SWIG_Python_NewPointerObj(new Type(value), type_info<Type>(), PointerResult::owned_proxied);
    }
};

} // namespace swig
