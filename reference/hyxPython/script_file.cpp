// Reads script files and calls their functions.
#include "reference/hyxPython/script_file.h"

#include "platform/hyxPython/script_conversions.h"
#include "reference/hyxPython/native_work.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <stdexcept>

namespace hyxPython {
namespace {

struct Loaded {
    std::filesystem::file_time_type changed;
    ScriptObject names;
};

std::map<std::string, Loaded>& loadedFiles() {
    // Never destroyed: at the process's end there is no interpreter left that would take the references.
    static auto* const files = new std::map<std::string, Loaded>;
    return *files;
}

/// The script's folder stands first in the search path while the script runs, as when it is run by itself; it stays
/// there, since functions import too.
bool addToSearchPath(std::string const& folder) {
    PyObject* path = PySys_GetObject("path");
    ScriptObject const text(PyUnicode_DecodeFSDefault(folder.c_str()));
    if (!path || !text)
        return false;
    int const there = PySequence_Contains(path, text.get());
    return there == 1 || (there == 0 && PyList_Insert(path, 0, text.get()) == 0);
}

bool readText(std::string const& path, std::string& text) {
    if (std::filesystem::is_directory(path)) {
        PyErr_Format(PyExc_IsADirectoryError, "the script '%s' is a folder", path.c_str());
        return false;
    }
    std::ifstream file(path, std::ios::binary);
    if (!file || !std::filesystem::is_regular_file(path)) {
        PyErr_Format(PyExc_FileNotFoundError, "the script '%s' cannot be read", path.c_str());
        return false;
    }
    text.assign(std::istreambuf_iterator<char>(file), {});
    if (size_t const end = text.find('\0'); end != std::string::npos) { // where the compiler would stop in silence
        PyErr_SetString(PyExc_SyntaxError, "source code cannot contain null bytes");
        int const line = 1 + static_cast<int>(std::count(text.begin(), text.begin() + end, '\n'));
        PyErr_SyntaxLocationEx(path.c_str(), line, -1);
        return false;
    }
    return true;
}

ScriptObject run(std::string const& path) {
    std::string text;
    if (!readText(path, text) || !addToSearchPath(std::filesystem::path(path).parent_path()))
        return {};
    ScriptObject names(PyDict_New());
    ScriptObject const file(PyUnicode_DecodeFSDefault(path.c_str()));
    ScriptObject const name(PyUnicode_DecodeFSDefault(std::filesystem::path(path).stem().c_str()));
    if (!names || !file || !name || PyDict_SetItemString(names.get(), "__builtins__", PyEval_GetBuiltins()) != 0 ||
        PyDict_SetItemString(names.get(), "__file__", file.get()) != 0 ||
        PyDict_SetItemString(names.get(), "__name__", name.get()) != 0)
        return {};
    ScriptObject const code(Py_CompileString(text.c_str(), path.c_str(), Py_file_input));
    if (!code)
        return {};
    ScriptObject const result(PyEval_EvalCode(code.get(), names.get(), names.get()));
    if (!result)
        return {};
    return names;
}

/// How many positional arguments a script's function takes, at most `most`.
size_t argumentCount(PyObject* function, size_t most) {
    ScriptObject const code(PyObject_GetAttrString(function, "__code__"));
    ScriptObject const count(code ? PyObject_GetAttrString(code.get(), "co_argcount") : nullptr);
    ScriptObject const flags(code ? PyObject_GetAttrString(code.get(), "co_flags") : nullptr);
    PyErr_Clear();
    constexpr long takesAnyNumber = 0x04;
    if (!count || !flags || (PyLong_AsLong(flags.get()) & takesAnyNumber))
        return most;
    size_t const wanted = PyLong_AsSize_t(count.get());
    return wanted < most ? wanted : most;
}

} // namespace

ScriptFile ScriptFile::load(std::string const& path, bool again) {
    if (!interpreterAnswers())
        throw std::runtime_error("scripts need an interpreter that runs this thread");
    std::error_code error;
    ScriptFile script;
    script.m_path = std::filesystem::absolute(path, error).lexically_normal();
    auto const changed = std::filesystem::last_write_time(script.m_path, error);
    auto& files = loadedFiles();
    auto known = files.find(script.m_path);
    if (known == files.end() || again || error || known->second.changed != changed) {
        ScriptObject names = run(script.m_path);
        if (!names)
            return script;
        known = files.insert_or_assign(script.m_path, Loaded{changed, std::move(names)}).first;
    }
    script.m_namespace = ScriptObject::borrow(known->second.names.get());
    return script;
}

ScriptObject ScriptFile::find(std::string const& name) const {
    PyObject* function = PyDict_GetItemString(m_namespace.get(), name.c_str());
    return function && PyCallable_Check(function) ? ScriptObject::borrow(function) : ScriptObject();
}

bool ScriptFile::hasFunction(std::string const& name) const {
    return static_cast<bool>(find(name));
}

ScriptObject ScriptFile::call(std::string const& name, std::vector<ScriptArgument> const& arguments) const {
    ScriptConversions const* conversions = getScriptConversions();
    if (!conversions)
        throw std::runtime_error("the module _hyxOSG is not loaded: import it before scripts are run");
    ScriptObject const function = find(name);
    size_t const count = function ? argumentCount(function.get(), arguments.size()) : 0;
    ScriptObject const tuple(PyTuple_New(count));
    if (!tuple)
        return {};
    for (size_t i = 0; i < count; ++i) {
        PyObject* argument = conversions->toScript(arguments[i].object, arguments[i].type);
        if (!argument)
            return {};
        PyTuple_SET_ITEM(tuple.get(), i, argument);
    }
    return callWith(name, tuple.get());
}

ScriptObject ScriptFile::callWith(std::string const& name, PyObject* argumentTuple) const {
    ScriptObject const function = find(name);
    if (!function) {
        PyErr_Format(PyExc_AttributeError, "the script '%s' has no function '%s'", m_path.c_str(), name.c_str());
        return {};
    }
    return ScriptObject(restWhereEnded([&] { return PyObject_CallObject(function.get(), argumentTuple); }));
}

} // namespace hyxPython
