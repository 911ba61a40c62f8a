// Questions to the interpreter that runs this process.
#include "reference/hyxPython/interpreter.h"

namespace hyxPython {
namespace {

std::string textOf(PyObject* object) {
    ScriptObject const text(object ? PyObject_Str(object) : nullptr);
    char const* bytes = text ? PyUnicode_AsUTF8(text.get()) : nullptr;
    PyErr_Clear();
    return bytes ? bytes : "";
}

} // namespace

bool interpreterAnswers() {
    return Py_IsInitialized() && PyGILState_Check();
}

bool interpreterInterrupts() {
    if (!interpreterAnswers())
        return false;
    return PyErr_Occurred() || PyErr_CheckSignals() != 0;
}

std::string interpreterProgram() {
    if (!interpreterAnswers())
        return "";
    PyObject* const program = PySys_GetObject("executable");
    return program && PyUnicode_Check(program) ? textOf(program) : "";
}

std::string describeError(PyObject* type, PyObject* value) {
    ScriptObject const name(type ? PyObject_GetAttrString(type, "__name__") : nullptr);
    return textOf(name.get()) + ": " + textOf(value);
}

std::string describeTraceback(PyObject* type, PyObject* value, PyObject* traceback) {
    ScriptObject const module(PyImport_ImportModule("traceback"));
    ScriptObject const lines(module ? PyObject_CallMethod(module.get(), "format_exception", "OOO", type,
                                                          value ? value : Py_None, traceback ? traceback : Py_None)
                                    : nullptr);
    ScriptObject const empty(PyUnicode_FromString(""));
    ScriptObject const text(lines && empty ? PyUnicode_Join(empty.get(), lines.get()) : nullptr);
    PyErr_Clear();
    return text ? textOf(text.get()) : textOf(value);
}

} // namespace hyxPython
