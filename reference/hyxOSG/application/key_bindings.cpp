// Follows the keys of an application's window.
#include "reference/hyxOSG/application/key_bindings.h"

#include "platform/hyxOSG/application/example_application.h"
#include "platform/hyxSDK/simulation.h"

#include <osgGA/CameraManipulator>
#include <osgGA/GUIEventAdapter>

#include <algorithm>

namespace hyxOSG {
namespace {

using App = ExampleApplication;
using Key = osgGA::GUIEventAdapter;

constexpr double faster = 1.25; ///< one press of + or -

void quit(App& app) {
    if (app.getQuitEventSetsDone())
        app.stop(app.getExitCode());
}

void goHome(App& app) {
    if (app.getCameraManipulator())
        app.getCameraManipulator()->home(0);
}

constexpr KeyBinding bindings[] = {
    {Key::KEY_F1, "F1", "shows or hides this list", [](App& app) { app.setEnableHelp(!app.getEnableHelp()); }},
    {Key::KEY_F2, "F2", "shows or hides the line of figures",
     [](App& app) { app.setEnableStatus(!app.getEnableStatus()); }},
    {'e', "e", "pauses and goes on", [](App& app) { app.setAutoStepping(!app.getAutoStepping()); }},
    {'.', ".", "makes one step", [](App& app) { app.stepSimulation(); }},
    {'+', "+", "runs faster", [](App& app) { app.setSpeed(app.getSpeed() * faster); }},
    {'-', "-", "runs slower", [](App& app) { app.setSpeed(app.getSpeed() / faster); }},
    {Key::KEY_Left, "Left", "pauses and goes back in time", [](App& app) { app.scrub(-1); }},
    {Key::KEY_Right, "Right", "pauses and goes forward in time", [](App& app) { app.scrub(1); }},
    {'r', "r", "builds the scene anew", [](App& app) { app.tryScene([&app] { app.reloadScene(); }); }},
    {Key::KEY_Page_Down, "Page Down", "builds the next scene",
     [](App& app) { app.tryScene([&app] { app.createNextScene(); }); }},
    {Key::KEY_Page_Up, "Page Up", "builds the previous scene",
     [](App& app) { app.tryScene([&app] { app.createPreviousScene(); }); }},
    {'f', "f", "fits the scene into the view", [](App& app) { app.fitSceneIntoView(); }},
    {Key::KEY_Space, "Space", "takes the camera home", goHome},
    {Key::KEY_F9, "F9", "shows or hides shapes, contacts and joints as lines",
     [](App& app) { app.setEnableDebugRenderer(!app.getEnableDebugRenderer()); }},
    {Key::KEY_F12, "F12", "saves the state", [](App& app) { app.getSimulation()->save(app.getSaveSceneFilename()); }},
    {Key::KEY_Escape, "Escape", "ends the program", quit},
};

} // namespace

std::span<KeyBinding const> keyBindings() {
    return bindings;
}

KeyBinding const* findKeyBinding(int key) {
    auto const found = std::ranges::find(bindings, key, &KeyBinding::key);
    return found == std::end(bindings) ? nullptr : found;
}

} // namespace hyxOSG
