// Runs code of the user inside of native code.
#pragma once

#include "binding/runtime/reference.h"

#include <Python.h>
#include <cxxabi.h>
#include <unistd.h>

namespace runtime {

// How often conversions have called what may be code of the user, which can delete what others have converted.
inline unsigned long user_code_runs = 0;

// Where a thread stays that the interpreter ends; does not return.
inline void (*rest_for_good)() noexcept = []() noexcept {
    for (;;)
        ::pause();
};

// The interpreter ends threads that still run at its exit by unwinding their stacks, wherever they wait for its lock.
// Frames of native code would then release objects without the lock, and those that let no exception pass end the
// process: the thread stays here instead, until the process ends.
template <class Code>
decltype(auto) run_user_code(Code code) {
    ++user_code_runs;
    try {
        return code();
    } catch (abi::__forced_unwind const&) {
        rest_for_good();
        throw;
    }
}

// Empty with an error set for what is no iterable.
inline Reference iterate(PyObject* object) {
    return Reference::take(run_user_code([object] { return PyObject_GetIter(object); }));
}

// Empty at the end, or with the error set that the iteration has raised.
inline Reference next_item(PyObject* iterator) {
    return Reference::take(run_user_code([iterator] { return PyIter_Next(iterator); }));
}

// -1 with the error set for what is no number.
inline double read_float(PyObject* object) {
    return run_user_code([object] { return PyFloat_AsDouble(object); });
}

} // namespace runtime
