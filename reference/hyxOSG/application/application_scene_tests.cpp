// The run of all scenes that take part in tests.
#include "platform/hyxPython/script_manager.h"
#include "reference/hyxOSG/application/application_implementation.h"

#include <cstdio>
#include <exception>

namespace hyxOSG {
namespace {

constexpr double ownTime = 1; // simulated seconds of a scene that names none

/// Takes a script's pending error over; a keyboard interrupt stays, for the run to end.
void takeScriptError() {
    if (auto* manager = hyxPython::ScriptManager::instance("", "", "", false))
        manager->registerError("scene test");
}

} // namespace

void ExampleApplication::Implementation::testScenes(ExampleApplication& application) {
    for (size_t index = 0; index < scenes.size() && !stopRequested; ++index) {
        SceneDescription const description = scenes.at(index);
        if (!description.unittest || (description.slowUnittest && !slowTests))
            continue;
        std::string const fault = testScene(application, index);
        if (application.breakRequested())
            return;
        if (!fault.empty())
            exitCode = 1;
        std::printf("scene %zu: %s\n", index, fault.empty() ? "passed" : fault.c_str());
        std::fflush(stdout);
    }
}

std::string ExampleApplication::Implementation::testScene(ExampleApplication& application, size_t index) {
    size_t const errors = countScriptErrors();
    std::string fault;
    try {
        stopTime = ownTime;
        application.setAutoStepping(true);
        if (!application.createSceneFromIndex(int(index)))
            fault = "it was not built";
        // A scene that pauses itself has come to its end.
        while (fault.empty() && autoStepping && !application.done())
            application.stepWrapper();
    } catch (std::exception const& error) {
        fault = error.what();
    }
    takeScriptError();
    return countScriptErrors() > errors ? "a script failed" : fault;
}

} // namespace hyxOSG
