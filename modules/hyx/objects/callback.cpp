// Callbacks made from Python functions, and the events that call them; the stop-watch.
#include "binding/vocabulary/rows.h"
#include "binding/vocabulary/script_function.h"
#include "platform/hyx/objects/event.h"
#include "platform/hyx/objects/high_accuracy_timer.h"

namespace {

hyx::Callback* make_callback(PyObject* function) {
    auto const kept = vocabulary::keep_function(function, "a callback is made from a function or another callable");
    return new hyx::Callback([kept] { vocabulary::call_function(kept, nullptr, "hyx::Callback"); });
}

// Inherited from templates.
bool valid(hyx::Callback const& self) {
    return self.valid();
}

void clear(hyx::Event& self) {
    self.clear();
}

std::size_t size(hyx::Event const& self) {
    return self.size();
}

void call(hyx::Callback const& self) {
    self();
}

void add(hyx::Event& self, hyx::Callback const& callback) {
    self.add(callback);
}

bool remove(hyx::Event& self, hyx::Callback const& callback) {
    return self.remove(callback);
}

void trigger(hyx::Event& self) {
    self.trigger();
}

constexpr Declared callback_rows[] = {
    FUNCTION(new_Callback, NEW(hyx::Callback, ()), NEW(hyx::Callback, (hyx::Callback const&)),
             MAKE(hyx::Callback, make_callback, (PyObject*))),
    FUNCTION(delete_Callback, DELETE(hyx::Callback)),
    FUNCTION(Callback_valid, ADAPTER(hyx::Callback, valid, valid, () const)),
    FUNCTION(Callback___call__, ADAPTER(hyx::Callback, __call__, call, () const)),
    REGISTER(hyx::Callback, Callback),
    INIT(Callback),
    FUNCTION(new_Event, NEW(hyx::Event, ())),
    FUNCTION(delete_Event, DELETE(hyx::Event)),
    FUNCTION(Event_add, ADAPTER(hyx::Event, add, add, (hyx::Callback const&))),
    FUNCTION(Event_remove, ADAPTER(hyx::Event, remove, remove, (hyx::Callback const&))),
    FUNCTION(Event_clear, ADAPTER(hyx::Event, clear, clear, ())),
    FUNCTION(Event_size, ADAPTER(hyx::Event, size, size, () const)),
    FUNCTION(Event_trigger, ADAPTER(hyx::Event, trigger, trigger, ())),
    REGISTER(hyx::Event, Event),
    INIT(Event),
    FUNCTION(new_HighAccuracyTimer, NEW(hyx::HighAccuracyTimer, (bool), true)),
    FUNCTION(delete_HighAccuracyTimer, DELETE(hyx::HighAccuracyTimer)),
    FUNCTION(HighAccuracyTimer_start, METHOD(hyx::HighAccuracyTimer, start, ())),
    FUNCTION(HighAccuracyTimer_stop, METHOD(hyx::HighAccuracyTimer, stop, ())),
    FUNCTION(HighAccuracyTimer_reset, METHOD(hyx::HighAccuracyTimer, reset, ())),
    FUNCTION(HighAccuracyTimer_isRunning, METHOD(hyx::HighAccuracyTimer, isRunning, () const)),
    FUNCTION(HighAccuracyTimer_getTime, METHOD(hyx::HighAccuracyTimer, getTime, () const)),
    FUNCTION(HighAccuracyTimer_getSeconds, METHOD(hyx::HighAccuracyTimer, getSeconds, () const)),
    REGISTER(hyx::HighAccuracyTimer, HighAccuracyTimer),
    INIT(HighAccuracyTimer),
};

} // namespace

ROWS(callback_rows);
