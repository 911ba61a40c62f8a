// The stream of notices.
#include "platform/hyx/objects/notify.h"

#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"

#include <memory>

namespace {

// Sends every notice to a Python function (level, text); None restores the console.
void set_sink(hyx::Notify& self, PyObject* function) {
    if (function == Py_None)
        return self.setSink({});
    if (!PyCallable_Check(function)) {
        PyErr_SetString(PyExc_TypeError, "a sink is a function of the level and the text");
        throw vocabulary::PythonError();
    }
    std::shared_ptr<PyObject> const kept(Py_NewRef(function), [](PyObject* object) {
        if (Py_IsInitialized())
            Py_DECREF(object);
    });
    self.setSink([kept](int level, std::string const& text) {
        if (!Py_IsInitialized())
            return;
        // A notice may be about an error that is pending, and a failing sink must not replace it.
        PyObject *type, *value, *traceback;
        PyErr_Fetch(&type, &value, &traceback);
        if (PyObject* result =
                PyObject_CallFunction(kept.get(), "is#", level, text.data(), static_cast<Py_ssize_t>(text.size())))
            Py_DECREF(result);
        else
            PyErr_WriteUnraisable(kept.get());
        PyErr_Restore(type, value, traceback);
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
