// The application's event of pausing and going on; its payload is whether the simulation steps from now on.
#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"
#include "platform/hyxOSG/application/example_application.h"
#include "platform/hyxPython/script_manager.h"

#include <memory>

namespace {

using AutoStepEvent = hyxOSG::ExampleApplication::AutoStepEvent;

void call(PyObject* function, bool stepping) {
    if (PyObject* result = PyObject_CallOneArg(function, stepping ? Py_True : Py_False))
        Py_DECREF(result);
    else if (auto* manager = hyxPython::ScriptManager::instance("", "", "", false))
        manager->registerError("hyxOSG::ExampleApplication::AutoStepEvent");
}

// Native objects may outlive the interpreter.
void release(PyObject* function) {
    if (Py_IsInitialized())
        Py_DECREF(function);
}

void add(AutoStepEvent& self, PyObject* function) {
    if (!PyCallable_Check(function)) {
        PyErr_SetString(PyExc_TypeError, "an event calls a function or another callable");
        throw vocabulary::PythonError();
    }
    std::shared_ptr<PyObject> const kept(Py_NewRef(function), release);
    self.add(AutoStepEvent::CallbackType([kept](bool stepping) { call(kept.get(), stepping); }));
}

// Inherited from a template.
void clear(AutoStepEvent& self) {
    self.clear();
}

std::size_t size(AutoStepEvent const& self) {
    return self.size();
}

constexpr Declared auto_step_event_rows[] = {
    FUNCTION(new_AutoStepEvent, NEW(hyxOSG::ExampleApplication::AutoStepEvent, ())),
    FUNCTION(delete_AutoStepEvent, DELETE(hyxOSG::ExampleApplication::AutoStepEvent)),
    FUNCTION(AutoStepEvent_add, ADAPTER(hyxOSG::ExampleApplication::AutoStepEvent, add, add, (PyObject*))),
    FUNCTION(AutoStepEvent_clear, ADAPTER(hyxOSG::ExampleApplication::AutoStepEvent, clear, clear, ())),
    FUNCTION(AutoStepEvent_size, ADAPTER(hyxOSG::ExampleApplication::AutoStepEvent, size, size, () const)),
    REGISTER(hyxOSG::ExampleApplication::AutoStepEvent, AutoStepEvent),
    INIT(AutoStepEvent),
};

} // namespace

ROWS(auto_step_event_rows);
