// What is known of the arguments of a call while they are converted, and while the forms of a dispatched one are tried.
#pragma once

#include "binding/runtime/this_lookup.h"
#include "binding/runtime/user_code.h"
#include "binding/vocabulary/argument_values.h"
#include "binding/vocabulary/call.h"

#include <cstdint>
#include <vector>

namespace vocabulary {

// Pointer objects that code of the user gave for arguments of a call, which perhaps nobody else holds.
class Given {
public:
    void hold(std::size_t index, SwigPyObject* pointer_object) {
        which_ |= 1u << index;
        uses_.emplace_back(pointer_object);
    }

    // Before a native call that may call back: code of the user may end there what it is called for.
    void let_end() noexcept {
        for (runtime::Use& use : uses_)
            use.let_end();
    }

    bool has(std::size_t index) const noexcept { return which_ & 1u << index; }

    std::uint32_t which() const noexcept { return which_; }

private:
    std::uint32_t which_ = 0; // bit i: argument i
    std::vector<runtime::Use> uses_;
};

// How many of a call's arguments had been converted when code of the user last ran.
class Earlier {
public:
    void converted(std::size_t index) noexcept {
        if (runs_ == runtime::user_code_runs)
            return;
        runs_ = runtime::user_code_runs;
        count_ = index;
    }

    std::size_t count() const noexcept { return count_; }

private:
    unsigned long runs_ = runtime::user_code_runs;
    std::size_t count_ = 0;
};

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
    Given given;
    bool may_have_raised = false; // a conversion that has left an error of the user's own

    void forget_what_may_have_ended() noexcept {
        if (runs == runtime::user_code_runs)
            return;
        known = given.which();
        converted = 0;
        runs = runtime::user_code_runs;
        may_have_raised = true;
    }

    SwigPyObject* handle(std::size_t index) noexcept {
        forget_what_may_have_ended();
        if (!(known & 1u << index)) {
            bool const at_once = runtime::find_this_at_once(arguments[index]) != nullptr;
            handles[index] = runtime::find_this(arguments[index]);
            if (!at_once && handles[index])
                given.hold(index, handles[index]);
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
