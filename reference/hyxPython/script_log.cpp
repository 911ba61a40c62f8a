// Passes notices to Python's `logging` and `warnings`.
#include "reference/hyxPython/script_log.h"

#include "reference/hyxPython/interpreter.h"
#include "reference/hyxPython/native_work.h"

namespace hyxPython {
namespace {

/// What is pending waits while the log is written.
class PendingError {
public:
    PendingError() { PyErr_Fetch(&m_type, &m_value, &m_traceback); }

    ~PendingError() { PyErr_Restore(m_type, m_value, m_traceback); }

    PendingError(PendingError const&) = delete;
    PendingError& operator=(PendingError const&) = delete;

private:
    PyObject* m_type = nullptr;
    PyObject* m_value = nullptr;
    PyObject* m_traceback = nullptr;
};

/// Does not import the module: where no script has, none has set it up.
ScriptObject logger() {
    ScriptObject const name(PyUnicode_FromString("logging"));
    ScriptObject const logging(name ? PyImport_GetModule(name.get()) : nullptr);
    ScriptObject found(logging ? PyObject_CallMethod(logging.get(), "getLogger", "s", "hyx") : nullptr);
    ScriptObject const set(found ? PyObject_CallMethod(found.get(), "hasHandlers", nullptr) : nullptr);
    return set && PyObject_IsTrue(set.get()) == 1 ? std::move(found) : ScriptObject();
}

/// Files that cannot be read bring words that are none.
ScriptObject readable(std::string const& text) {
    return ScriptObject(PyUnicode_DecodeUTF8(text.data(), Py_ssize_t(text.size()), "replace"));
}

} // namespace

bool logForScripts(int level, std::string const& text) {
    if (!interpreterAnswers())
        return false;
    PendingError const pending;
    ScriptObject const log = logger();
    ScriptObject const words = log ? readable(text) : ScriptObject();
    // Python counts in tens, from 10 for what helps to find faults.
    auto const write = [&] { return PyObject_CallMethod(log.get(), "log", "isO", level * 10, "%s", words.get()); };
    ScriptObject const done(words ? restWhereEnded(write) : nullptr);
    PyErr_Clear();
    return bool(done);
}

bool warnScript(std::string const& text) {
    ScriptCall const turn;
    if (!interpreterAnswers() || PyErr_Occurred() || !PyEval_GetFrame())
        return false;
    if (ScriptObject const words = readable(text))
        PyErr_WarnFormat(PyExc_RuntimeWarning, 1, "%U", words.get());
    return true;
}

} // namespace hyxPython
