// Rows of ExampleApplication: scenes, their roots and their decoration.
#include "binding/vocabulary/rows.h"
#include "platform/hyxOSG/application/example_application.h"

namespace {

constexpr Declared scenes_rows[] = {
    FUNCTION(
        ExampleApplication_addScene,
        METHOD(hyxOSG::ExampleApplication, addScene, (std::string const&, std::string const&, int, bool, float, bool),
               true, -1.0f, false),
        METHOD(hyxOSG::ExampleApplication, addScene, (std::string const&, std::string const&, bool, float, bool), true,
               -1.0f, false),
        METHOD(hyxOSG::ExampleApplication, addScene, (hyxOSG::BuildScenePtr, int, bool, float, bool), true, -1.0f,
               false),
        METHOD(hyxOSG::ExampleApplication, addScene, (hyxOSG::BuildScenePtr, bool, float, bool), true, -1.0f, false),
        METHOD(hyxOSG::ExampleApplication, addScene, (hyxOSG::SceneDescription)),
        METHOD(hyxOSG::ExampleApplication, addScene, (hyxOSG::SceneDescription, int))),
    FUNCTION(ExampleApplication_clearAddedScenes, METHOD(hyxOSG::ExampleApplication, clearAddedScenes, ())),
    FUNCTION(ExampleApplication_getNumScenes, METHOD(hyxOSG::ExampleApplication, getNumScenes, () const)),
    FUNCTION(ExampleApplication_createSceneFromKey, METHOD(hyxOSG::ExampleApplication, createSceneFromKey, (int))),
    FUNCTION(ExampleApplication_createSceneFromIndex,
             METHOD(hyxOSG::ExampleApplication, createSceneFromIndex, (int, bool), false)),
    FUNCTION(ExampleApplication_reloadScene, METHOD(hyxOSG::ExampleApplication, reloadScene, ())),
    FUNCTION(ExampleApplication_createNextScene, METHOD(hyxOSG::ExampleApplication, createNextScene, ())),
    FUNCTION(ExampleApplication_createPreviousScene, METHOD(hyxOSG::ExampleApplication, createPreviousScene, ())),
    FUNCTION(ExampleApplication_clearScene, METHOD(hyxOSG::ExampleApplication, clearScene, ())),
    FUNCTION(ExampleApplication_centerScene, METHOD(hyxOSG::ExampleApplication, centerScene, ())),
    FUNCTION(ExampleApplication_fitSceneIntoView, METHOD(hyxOSG::ExampleApplication, fitSceneIntoView, ())),
    FUNCTION(ExampleApplication_getCallback, METHOD(hyxOSG::ExampleApplication, getCallback, (int) const)),
    FUNCTION(ExampleApplication_getCallbackIdx, METHOD(hyxOSG::ExampleApplication, getCallbackIdx, (size_t) const)),
    FUNCTION(ExampleApplication_getScene, METHOD(hyxOSG::ExampleApplication, getScene, ())),
    FUNCTION(ExampleApplication_getSceneRoot, METHOD(hyxOSG::ExampleApplication, getSceneRoot, ())),
    FUNCTION(ExampleApplication_getSceneHyxOSGRoot, METHOD(hyxOSG::ExampleApplication, getSceneHyxOSGRoot, ())),
    FUNCTION(ExampleApplication_getSceneSwitch, METHOD(hyxOSG::ExampleApplication, getSceneSwitch, ())),
    FUNCTION(ExampleApplication_getRoot, METHOD(hyxOSG::ExampleApplication, getRoot, ())),
    FUNCTION(ExampleApplication_setScene, METHOD(hyxOSG::ExampleApplication, setScene, (osg::Group*))),
    FUNCTION(ExampleApplication_getSceneDecorator, METHOD(hyxOSG::ExampleApplication, getSceneDecorator, ())),
    FUNCTION(ExampleApplication_getSaveSceneFilename,
             METHOD(hyxOSG::ExampleApplication, getSaveSceneFilename, () const)),
    FUNCTION(ExampleApplication_restoreFromFile,
             METHOD(hyxOSG::ExampleApplication, restoreFromFile, (std::string const&))),
    FUNCTION(ExampleApplication_registerRemovedGeometry,
             STATIC(hyxOSG::ExampleApplication, registerRemovedGeometry, (hyxOSG::GeometryNode*))),
    FUNCTION(ExampleApplication_journalRenderLoader,
             METHOD(hyxOSG::ExampleApplication, journalRenderLoader, (hyxSDK::Assembly*, bool))),
};

} // namespace

ROWS(scenes_rows);
