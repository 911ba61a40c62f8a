// The stream of notices.
#include "platform/hyx/objects/notify.h"

#include "binding/runtime/user_code.h"
#include "binding/vocabulary/rows.h"
#include "binding/vocabulary/script_function.h"

namespace {

// Sends every notice to a Python function (level, text); None restores the console.
void set_sink(hyx::Notify& self, PyObject* function) {
    if (function == Py_None)
        return self.setSink({});
    auto const kept = vocabulary::keep_function(function, "a sink is a function of the level and the text");
    self.setSink([kept](int level, std::string const& text) {
        if (!kept.alive())
            return;
        // A notice may be about an error that is pending, and a failing sink must not replace it.
        runtime::SavedError const pending;
        auto const result = runtime::Reference::take(runtime::run_user_code([&] {
            return PyObject_CallFunction(kept.get(), "is#", level, text.data(), static_cast<Py_ssize_t>(text.size()));
        }));
        if (!result)
            PyErr_WriteUnraisable(kept.get());
    });
}

constexpr Declared notify_rows[] = {
    FUNCTION(Notify_instance, STATIC(hyx::Notify, instance, ())),
    FUNCTION(Notify_notify, METHOD(hyx::Notify, notify, (int, std::string const&))),
    FUNCTION(Notify_setLevel, METHOD(hyx::Notify, setLevel, (int))),
    FUNCTION(Notify_getLevel, METHOD(hyx::Notify, getLevel, () const)),
    FUNCTION(Notify_setSink, ADAPTER(hyx::Notify, setSink, set_sink, (PyObject*))),
    REGISTER(hyx::Notify, Notify),
    INIT(Notify),
};

} // namespace

ROWS(notify_rows);
