// Rows of ExampleApplication: running scripts; how objects get into them.
#include "binding/directors/python_call.h"
#include "binding/runtime/pointers.h"
#include "binding/runtime/type_chain.h"
#include "binding/vocabulary/rows.h"
#include "platform/hyxOSG/application/example_application.h"
#include "platform/hyxPython/script_conversions.h"

#include <string>

namespace {

// How objects reach scripts that the library runs: as borrowed proxies of the types that are known by name.
swig_type_info* find_type(char const* type) {
    return runtime::known_type((std::string(type) + " *").c_str());
}

PyObject* to_script(void* object, char const* type) {
    swig_type_info* descriptor = find_type(type);
    if (!descriptor)
        return PyErr_Format(PyExc_RuntimeError, "scripts know no type '%s'", type);
    PyObject* proxy = SWIG_Python_NewPointerObj(object, descriptor, PointerResult::borrowed_proxied);
    return proxy && Swig::shown_by ? Swig::shown_by(proxy) : proxy;
}

void* from_script(PyObject* value, char const* type, bool& ok) {
    void* pointer = nullptr;
    swig_type_info* descriptor = find_type(type);
    ok = descriptor && SWIG_Python_ConvertPtrAndOwn(value, &pointer, descriptor) == SWIG_OK;
    return pointer;
}

constexpr hyxPython::ScriptConversions conversions = {to_script, from_script};

// Installed with the module, before any script can be run.
bool const installed = (hyxPython::setScriptConversions(&conversions), true);

constexpr Declared scripting_rows[] = {
    FUNCTION(ExampleApplication_executePythonScript,
             METHOD(hyxOSG::ExampleApplication, executePythonScript, (hyx::String const&, hyx::String const&, bool&))),
    FUNCTION(ExampleApplication_getScriptFile, METHOD(hyxOSG::ExampleApplication, getScriptFile, () const)),
    FUNCTION(ExampleApplication_handleReactiveScriptErrors,
             METHOD(hyxOSG::ExampleApplication, handleReactiveScriptErrors, (bool), true)),
    FUNCTION(ExampleApplication_useCoSimulation, METHOD(hyxOSG::ExampleApplication, useCoSimulation, () const)),
    FUNCTION(ExampleApplication_updateCoSimulationServer,
             METHOD(hyxOSG::ExampleApplication, updateCoSimulationServer, ())),
    FUNCTION(
        ExampleApplication_updatePythonCoSimulationServer,
        METHOD(hyxOSG::ExampleApplication, updatePythonCoSimulationServer, (hyx::String const&, std::stringstream&))),
    FUNCTION(ExampleApplication_coSimulationCallPython,
             METHOD(hyxOSG::ExampleApplication, coSimulationCallPython, (hyxNet::CoSimulationServer*))),
    FUNCTION(ExampleApplication_updateRemoteDebugger, METHOD(hyxOSG::ExampleApplication, updateRemoteDebugger, ())),
    FUNCTION(ExampleApplication_pushFrameToRemoteViewer,
             METHOD(hyxOSG::ExampleApplication, pushFrameToRemoteViewer, ())),
    FUNCTION(ExampleApplication_getController, METHOD(hyxOSG::ExampleApplication, getController, ())),
    FUNCTION(ExampleApplication_getControlChannelPort,
             METHOD(hyxOSG::ExampleApplication, getControlChannelPort, () const)),
    FUNCTION(ExampleApplication_pushParametersToControlChannel,
             METHOD(hyxOSG::ExampleApplication, pushParametersToControlChannel, ())),
    FUNCTION(ExampleApplication_setEnableControlChannelTickSignals,
             METHOD(hyxOSG::ExampleApplication, setEnableControlChannelTickSignals, (bool))),
};

} // namespace

ROWS(scripting_rows);
