// What is known of the arguments of a dispatched call while its forms are tried.
#pragma once

#include "binding/runtime/this_lookup.h"
#include "binding/runtime/user_code.h"
#include "binding/vocabulary/argument_values.h"
#include "binding/vocabulary/call.h"

#include <cstdint>

namespace vocabulary {

// The arguments of a dispatched call with their pointer objects, each looked up at most once.
struct Candidates {
    PyObject* const* arguments;
    SwigPyObject* handles[most_arguments];
    std::uint32_t known = 0;
    // The last type that an argument converted to, for those in `converted`: several forms often want the same.
    std::uint32_t converted = 0;
    swig_type_info* types[most_arguments];
    void* pointers[most_arguments];
    unsigned long runs = runtime::user_code_runs;
    bool may_have_raised = false; // a conversion that has left an error of the user's own

    void forget_what_may_have_ended() noexcept {
        if (runs == runtime::user_code_runs)
            return;
        known = converted = 0;
        runs = runtime::user_code_runs;
        may_have_raised = true;
    }

    SwigPyObject* handle(std::size_t index) noexcept {
        forget_what_may_have_ended();
        if (!(known & 1u << index)) {
            handles[index] = runtime::find_this(arguments[index]);
            forget_what_may_have_ended();
            known |= 1u << index;
        }
        return handles[index];
    }

    bool convert(std::size_t index, swig_type_info* type, Slot& slot) noexcept {
        if (PyUnicode_CheckExact(arguments[index])) // often the first argument that tells forms apart
            return false;
        SwigPyObject* const found = handle(index);
        if (!found)
            return false;
        if (!(converted & 1u << index) || types[index] != type) {
            if (convert_handles(found, type, &pointers[index]) != SWIG_OK)
                return false;
            types[index] = type;
            converted |= 1u << index;
        }
        slot.pointer = pointers[index];
        return true;
    }
};

} // namespace vocabulary
