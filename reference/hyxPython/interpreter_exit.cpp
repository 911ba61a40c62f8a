// Tells when the interpreter's exit begins.
#include "reference/hyxPython/interpreter.h"
#include "reference/hyxPython/native_work.h"

namespace hyxPython {
namespace {

PyObject* restOthers(PyObject*, PyObject*) {
    restOtherThreads();
    Py_RETURN_NONE;
}

PyMethodDef definition = {"rest_other_threads", restOthers, METH_NOARGS, nullptr};

bool registerCall() {
    ScriptObject const atexit(PyImport_ImportModule("atexit"));
    ScriptObject const call(atexit ? PyCFunction_New(&definition, nullptr) : nullptr);
    return bool(ScriptObject(call ? PyObject_CallMethod(atexit.get(), "register", "O", call.get()) : nullptr));
}

} // namespace

bool watchExit() {
    // Once: what is registered first is called last, when scripts have ended threads of their own.
    static bool watched = false;
    return watched = watched || registerCall();
}

} // namespace hyxPython
