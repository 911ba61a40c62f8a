// Scripts that the application runs.
#include "platform/hyxPython/script_conversions.h"
#include "reference/hyxOSG/application/application_implementation.h"
#include "reference/hyxPython/script_file.h"

#include <stdexcept>

namespace hyxOSG {

osg::Group* ExampleApplication::executePythonScript(hyx::String const& file, hyx::String const& function, bool& ok) {
    using hyxPython::ScriptFile;
    using hyxPython::ScriptObject;
    ok = false;
    m_implementation->scriptFile = file;
    ScriptFile const script = ScriptFile::load(file);
    if (!script)
        return nullptr;
    ScriptObject const result = script.call(function, {{&m_implementation->ensureSimulation(), "hyxSDK::Simulation"},
                                                       {this, "hyxOSG::ExampleApplication"},
                                                       {m_implementation->graph.sceneRoot(), "osg::Group"}});
    if (!result)
        return nullptr;
    bool isGroup = false;
    auto* group =
        static_cast<osg::Group*>(hyxPython::getScriptConversions()->fromScript(result.get(), "osg::Group", isGroup));
    if (!isGroup)
        throw std::runtime_error("the function '" + function + "' of '" + file + "' must return a group or None");
    m_implementation->scriptGroup = group;
    ok = true;
    return group;
}

std::string ExampleApplication::getScriptFile() const {
    return m_implementation->scriptFile;
}

bool ExampleApplication::updatePythonCoSimulationServer(hyx::String const& function, std::stringstream& stream) {
    using namespace hyxPython;
    if (m_implementation->scriptFile.empty())
        return false;
    ScriptFile const script = ScriptFile::load(m_implementation->scriptFile);
    if (!script || !script.hasFunction(function))
        return false;
    std::string const text = stream.str();
    ScriptObject const arguments(Py_BuildValue("(s#)", text.data(), Py_ssize_t(text.size())));
    ScriptObject const result = arguments ? script.callWith(function, arguments.get()) : ScriptObject();
    if (!result)
        return false;
    ScriptObject const answer(result.get() == Py_None ? PyUnicode_FromString("") : PyObject_Str(result.get()));
    char const* bytes = answer ? PyUnicode_AsUTF8(answer.get()) : nullptr;
    if (!bytes)
        return false;
    stream.str(bytes);
    stream.clear();
    return true;
}

bool ExampleApplication::coSimulationCallPython(hyxNet::CoSimulationServer* server) {
    if (!server || server->getCalledFunction().empty())
        return false;
    std::stringstream stream(server->getCallArgument());
    if (!updatePythonCoSimulationServer(server->getCalledFunction(), stream))
        return false;
    server->setCallResult(stream.str());
    return true;
}

} // namespace hyxOSG
