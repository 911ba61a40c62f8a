// The errors of scripts that nobody caught.
#include "platform/hyxPython/script_manager.h"

#include "binding/vocabulary/python_values.h"
#include "binding/vocabulary/rows.h"

namespace {

using hyxPython::ScriptManager;

// (where, message, traceback) of each.
PyObject* errors(ScriptManager const& self) {
    runtime::Reference const list = runtime::Reference::take(PyList_New(0));
    for (ScriptManager::Error const& error : self.getErrors()) {
        runtime::Reference const item = runtime::Reference::take(
            Py_BuildValue("(sss)", error.where.c_str(), error.message.c_str(), error.traceback.c_str()));
        if (!list.get() || !item.get() || PyList_Append(list.get(), item.get()) < 0)
            throw vocabulary::PythonError();
    }
    return Py_NewRef(list.get());
}

constexpr Declared script_manager_rows[] = {
    FUNCTION(ScriptManager_instance, STATIC(hyxPython::ScriptManager, instance,
                                            (hyx::String const&, hyx::String const&, hyx::String const&, bool),
                                            hyx::String(), hyx::String(), hyx::String(), false)),
    FUNCTION(ScriptManager_hasErrors, METHOD(hyxPython::ScriptManager, hasErrors, () const)),
    FUNCTION(ScriptManager_getNumErrors, METHOD(hyxPython::ScriptManager, getNumErrors, () const)),
    FUNCTION(ScriptManager_getErrors, ADAPTER(hyxPython::ScriptManager, getErrors, errors, () const)),
    FUNCTION(ScriptManager_clearErrors, METHOD(hyxPython::ScriptManager, clearErrors, ())),
    REGISTER(hyxPython::ScriptManager, ScriptManager),
    INIT(ScriptManager),
};

} // namespace

ROWS(script_manager_rows);
