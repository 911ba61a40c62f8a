// Rows of SceneDescription.
#include "platform/hyxOSG/application/scene_description.h"

#include "binding/vocabulary/rows.h"

namespace {

constexpr Declared scene_description_rows[] = {
    FUNCTION(
        new_SceneDescription, NEW(hyxOSG::SceneDescription, ()),
        NEW(hyxOSG::SceneDescription, (hyxOSG::BuildScenePtr, bool, float, bool), true, -1.0f, false),
        NEW(hyxOSG::SceneDescription, (std::string const&, std::string const&, bool, float, bool), true, -1.0f, false),
        NEW(hyxOSG::SceneDescription, (std::string const&, bool, float, bool), true, -1.0f, false)),
    FUNCTION(delete_SceneDescription, DELETE(hyxOSG::SceneDescription)),
    FUNCTION(SceneDescription_isValid, METHOD(hyxOSG::SceneDescription, isValid, () const)),
    FUNCTION(SceneDescription_scene_get, GET(hyxOSG::SceneDescription, scene)),
    FUNCTION(SceneDescription_scene_set, SET(hyxOSG::SceneDescription, scene, (hyxOSG::BuildScenePtr))),
    FUNCTION(SceneDescription_unittest_get, GET(hyxOSG::SceneDescription, unittest)),
    FUNCTION(SceneDescription_unittest_set, SET(hyxOSG::SceneDescription, unittest, (bool))),
    FUNCTION(SceneDescription_stopAfter_get, GET(hyxOSG::SceneDescription, stopAfter)),
    FUNCTION(SceneDescription_stopAfter_set, SET(hyxOSG::SceneDescription, stopAfter, (float))),
    FUNCTION(SceneDescription_slowUnittest_get, GET(hyxOSG::SceneDescription, slowUnittest)),
    FUNCTION(SceneDescription_slowUnittest_set, SET(hyxOSG::SceneDescription, slowUnittest, (bool))),
    FUNCTION(SceneDescription_valid_get, GET(hyxOSG::SceneDescription, valid)),
    FUNCTION(SceneDescription_valid_set, SET(hyxOSG::SceneDescription, valid, (bool))),
    FUNCTION(SceneDescription_scriptFunction_get, GET(hyxOSG::SceneDescription, scriptFunction)),
    FUNCTION(SceneDescription_scriptFunction_set, SET(hyxOSG::SceneDescription, scriptFunction, (std::string const&))),
    FUNCTION(SceneDescription_fileName_get, GET(hyxOSG::SceneDescription, fileName)),
    FUNCTION(SceneDescription_fileName_set, SET(hyxOSG::SceneDescription, fileName, (std::string const&))),
    REGISTER(hyxOSG::SceneDescription, SceneDescription),
    INIT(SceneDescription),
};

} // namespace

ROWS(scene_description_rows);
