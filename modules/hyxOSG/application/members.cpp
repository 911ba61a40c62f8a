// Rows of the data members of ExampleApplication.
#include "binding/vocabulary/rows.h"
#include "platform/hyxOSG/application/example_application.h"

namespace {

constexpr Declared members_rows[] = {
    FUNCTION(ExampleApplication_autoStepEvent_get, GET_BORROWED(hyxOSG::ExampleApplication, autoStepEvent)),
    FUNCTION(ExampleApplication_autoStepEvent_set,
             SET(hyxOSG::ExampleApplication, autoStepEvent, (hyxOSG::ExampleApplication::AutoStepEvent const&))),
    FUNCTION(ExampleApplication_m_loadedSceneFile_get, GET(hyxOSG::ExampleApplication, m_loadedSceneFile)),
    FUNCTION(ExampleApplication_m_loadedSceneFile_set, SET(hyxOSG::ExampleApplication, m_loadedSceneFile, (bool))),
    FUNCTION(ExampleApplication_m_isLoadingScene_get, GET(hyxOSG::ExampleApplication, m_isLoadingScene)),
    FUNCTION(ExampleApplication_m_isLoadingScene_set, SET(hyxOSG::ExampleApplication, m_isLoadingScene, (bool))),
    FUNCTION(ExampleApplication_m_isFMU_get, GET(hyxOSG::ExampleApplication, m_isFMU)),
    FUNCTION(ExampleApplication_m_isFMU_set, SET(hyxOSG::ExampleApplication, m_isFMU, (bool))),
    FUNCTION(ExampleApplication_m_sceneLoadEvent_get, GET_BORROWED(hyxOSG::ExampleApplication, m_sceneLoadEvent)),
    FUNCTION(ExampleApplication_m_sceneLoadEvent_set,
             SET(hyxOSG::ExampleApplication, m_sceneLoadEvent, (hyx::Event const&))),
    FUNCTION(ExampleApplication_m_hostName_get, GET(hyxOSG::ExampleApplication, m_hostName)),
    FUNCTION(ExampleApplication_m_hostName_set, SET(hyxOSG::ExampleApplication, m_hostName, (std::string const&))),
};

} // namespace

ROWS(members_rows);
