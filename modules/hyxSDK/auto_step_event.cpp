// The application's event of pausing and going on; its payload is whether the simulation steps from now on.
#include "binding/vocabulary/rows.h"
#include "binding/vocabulary/script_function.h"
#include "platform/hyxOSG/application/example_application.h"

namespace {

using AutoStepEvent = hyxOSG::ExampleApplication::AutoStepEvent;

void add(AutoStepEvent& self, PyObject* function) {
    auto const kept = vocabulary::keep_function(function, "an event calls a function or another callable");
    self.add(AutoStepEvent::CallbackType([kept](bool stepping) {
        vocabulary::call_function(kept, stepping ? Py_True : Py_False, "hyxOSG::ExampleApplication::AutoStepEvent");
    }));
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
