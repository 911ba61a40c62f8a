// Takes errors over from the interpreter and gives the first of them back.
#include "reference/hyxPython/script_errors.h"

#include "platform/hyxPython/script_manager.h"

namespace hyxPython {
namespace {

FirstError* innermost = nullptr;

} // namespace

std::string takeScriptError(char const* where) {
    if (!interpreterAnswers() || !PyErr_Occurred())
        return "";
    ScriptManager* const manager = ScriptManager::instance("", "", "", false);
    hyx::UInt const before = manager->getNumRegistered();
    manager->registerError(where);
    bool const taken = manager->getNumRegistered() > before;
    return taken ? std::string(manager->getErrors().back().message) : "";
}

FirstError::FirstError() : m_outer(std::exchange(innermost, this)) {}

FirstError::~FirstError() {
    innermost = m_outer;
}

void FirstError::offer(PyObject* type, PyObject* value, PyObject* traceback) {
    for (FirstError* keeper = innermost; keeper; keeper = keeper->m_outer) {
        if (keeper->m_type)
            continue;
        keeper->m_type = ScriptObject::borrow(type);
        keeper->m_value = ScriptObject::borrow(value);
        keeper->m_traceback = ScriptObject::borrow(traceback);
    }
}

void FirstError::raise() {
    if (m_type && !PyErr_Occurred())
        PyErr_Restore(m_type.release(), m_value.release(), m_traceback.release());
}

} // namespace hyxPython
