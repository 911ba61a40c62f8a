// Python functions that native code keeps and calls.
#pragma once

#include "binding/runtime/reference.h"
#include "binding/runtime/user_code.h"
#include "binding/vocabulary/python_values.h"
#include "platform/hyxPython/script_manager.h"

namespace vocabulary {

// Throws with TypeError set, in the words of `refusal`, for what cannot be called.
inline runtime::KeptReference keep_function(PyObject* function, char const* refusal) {
    if (!PyCallable_Check(function)) {
        PyErr_SetString(PyExc_TypeError, refusal);
        throw PythonError();
    }
    return runtime::KeptReference(function);
}

// Calls a function with one argument, or with none for NULL. An error has no caller who could catch it: it goes to the
// script manager under the name of the native caller, or stays set where there is no manager.
inline void call_function(runtime::KeptReference const& function, PyObject* argument, char const* caller) {
    PyObject* const arguments[] = {argument};
    auto const result = runtime::Reference::take(runtime::run_user_code(
        [&] { return PyObject_Vectorcall(function.get(), arguments, argument ? 1u : 0u, nullptr); }));
    if (result)
        return;
    if (auto* manager = hyxPython::ScriptManager::instance("", "", "", false))
        manager->registerError(caller);
}

} // namespace vocabulary
