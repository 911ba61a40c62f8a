/// Scripts that the application runs.
#include "reference/hyxOSG/application/application_state.h"

#include "platform/hyxPython/script_conversions.h"
#include "reference/hyxPython/script_file.h"

#include <stdexcept>

namespace hyxOSG {

osg::Group* ExampleApplication::executePythonScript(const hyx::String& file, const hyx::String& function, bool& ok) {
  using hyxPython::ScriptFile;
  using hyxPython::ScriptObject;
  ok = false;
  m_state->scriptFile = file;
  const ScriptFile script = ScriptFile::load(file);
  if (!script) return nullptr;
  const ScriptObject result = script.call(function, {{&m_state->ensureSimulation(), "hyxSDK::Simulation"},
                                                     {this, "hyxOSG::ExampleApplication"},
                                                     {m_state->graph.sceneRoot(), "osg::Group"}});
  if (!result) return nullptr;
  bool isGroup = false;
  auto* group = static_cast<osg::Group*>(
      hyxPython::getScriptConversions()->fromScript(result.get(), "osg::Group", isGroup));
  if (!isGroup)
    throw std::runtime_error("the function '" + function + "' of '" + file + "' must return a group or None");
  m_state->scriptGroup = group;
  ok = true;
  return group;
}

std::string ExampleApplication::getScriptFile() const { return m_state->scriptFile; }

bool ExampleApplication::updatePythonCoSimulationServer(const hyx::String& function, std::stringstream& stream) {
  using namespace hyxPython;
  if (m_state->scriptFile.empty()) return false;
  const ScriptFile script = ScriptFile::load(m_state->scriptFile);
  if (!script || !script.hasFunction(function)) return false;
  const std::string text = stream.str();
  const ScriptObject arguments(Py_BuildValue("(s#)", text.data(), Py_ssize_t(text.size())));
  const ScriptObject result = arguments ? script.callWith(function, arguments.get()) : ScriptObject();
  if (!result) return false;
  const ScriptObject answer(result.get() == Py_None ? PyUnicode_FromString("") : PyObject_Str(result.get()));
  const char* bytes = answer ? PyUnicode_AsUTF8(answer.get()) : nullptr;
  if (!bytes) return false;
  stream.str(bytes);
  stream.clear();
  return true;
}

bool ExampleApplication::coSimulationCallPython(hyxNet::CoSimulationServer* server) {
  if (!server || server->getCalledFunction().empty()) return false;
  std::stringstream stream(server->getCallArgument());
  if (!updatePythonCoSimulationServer(server->getCalledFunction(), stream)) return false;
  server->setCallResult(stream.str());
  return true;
}

}  // namespace hyxOSG
