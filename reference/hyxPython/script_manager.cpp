// Records the errors of scripts.
#include "platform/hyxPython/script_manager.h"

#include "platform/hyxPython/script_conversions.h"
#include "reference/hyxPython/interpreter.h"
#include "reference/hyxPython/script_errors.h"

#include <cstdio>

namespace hyxPython {
namespace {

constexpr size_t mostErrorsKept = 1000;

ScriptConversions const* installedConversions = nullptr;

/// A keyboard interrupt and a request to exit stay pending, for the loop to follow.
bool endsTheProgram() {
    return PyErr_ExceptionMatches(PyExc_KeyboardInterrupt) || PyErr_ExceptionMatches(PyExc_SystemExit);
}

/// 10, 100, 1000 and so on: an error of each frame is heard of, and buries nothing.
bool isRoundNumber(hyx::UInt count) {
    while (count % 10 == 0 && count > 0)
        count /= 10;
    return count == 1;
}

void addModuleFolder(hyx::String const& folder) {
    PyObject* path = PySys_GetObject("path");
    ScriptObject const text(PyUnicode_DecodeFSDefault(folder.c_str()));
    if (path && text)
        PyList_Insert(path, 0, text.get());
    PyErr_Clear();
}

void runMain(hyx::String const& path) {
    FILE* file = std::fopen(path.c_str(), "rb");
    if (file)
        PyRun_SimpleFileEx(file, path.c_str(), true);
}

} // namespace

ScriptManager* ScriptManager::instance(hyx::String const& scriptPath, hyx::String const& modulePath,
                                       hyx::String const& startScript, bool reset) {
    if (!interpreterAnswers())
        return nullptr;
    // Lives to the end: the interpreter may report until then, and who drops a reference must not end it.
    static ScriptManager* const manager = [] {
        auto* const made = new ScriptManager;
        made->reference();
        return made;
    }();
    if (reset)
        manager->clearErrors();
    if (!modulePath.empty())
        addModuleFolder(modulePath);
    if (!scriptPath.empty())
        addModuleFolder(scriptPath);
    if (!startScript.empty())
        runMain(startScript);
    return manager;
}

void ScriptManager::registerError(hyx::String const& where) {
    if (!interpreterAnswers() || !PyErr_Occurred() || endsTheProgram())
        return;
    PyObject *type = nullptr, *value = nullptr, *traceback = nullptr;
    PyErr_Fetch(&type, &value, &traceback);
    PyErr_NormalizeException(&type, &value, &traceback);
    Error error{where, describeError(type, value), describeTraceback(type, value, traceback)};
    if (m_errors.size() >= mostErrorsKept)
        m_errors.erase(m_errors.begin());
    m_errors.push_back(error);
    ++m_registered;
    FirstError::offer(type, value, traceback);
    hyx::UInt const times = ++m_printed[error.traceback];
    PyErr_Restore(type, value, traceback);
    if (times == 1)
        return PyErr_PrintEx(0); // what it printed must not keep the objects of the script alive
    PyErr_Clear();
    if (isRoundNumber(times))
        PySys_FormatStderr("%s (%zu times, the last in %s)\n", error.message.c_str(), size_t(times), where.c_str());
}

void setScriptConversions(ScriptConversions const* conversions) {
    installedConversions = conversions;
}

ScriptConversions const* getScriptConversions() {
    return installedConversions;
}

} // namespace hyxPython
