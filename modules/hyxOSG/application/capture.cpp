// Rows of ExampleApplication: pictures and films of what is shown.
#include "binding/vocabulary/rows.h"
#include "platform/hyxOSG/application/example_application.h"

namespace {

constexpr Declared capture_rows[] = {
    FUNCTION(ExampleApplication_takeScreenShot,
             METHOD(hyxOSG::ExampleApplication, takeScreenShot, (hyx::String const&), hyx::String())),
    FUNCTION(ExampleApplication_getImageCapture, METHOD(hyxOSG::ExampleApplication, getImageCapture, ()),
             METHOD(hyxOSG::ExampleApplication, getImageCapture, () const)),
    FUNCTION(ExampleApplication_getVideoServerCapture, METHOD(hyxOSG::ExampleApplication, getVideoServerCapture, ())),
    FUNCTION(ExampleApplication_setupVideoCaptureRenderTotexture,
             METHOD(hyxOSG::ExampleApplication, setupVideoCaptureRenderTotexture, ())),
    FUNCTION(ExampleApplication_getVideoCaptureRendertoTexture,
             METHOD(hyxOSG::ExampleApplication, getVideoCaptureRendertoTexture, ())),
    FUNCTION(ExampleApplication_setEnableCaptureSyncWithSimulation,
             METHOD(hyxOSG::ExampleApplication, setEnableCaptureSyncWithSimulation, (bool))),
    FUNCTION(ExampleApplication_getEnableCaptureSyncWithSimulation,
             METHOD(hyxOSG::ExampleApplication, getEnableCaptureSyncWithSimulation, () const)),
    FUNCTION(ExampleApplication_addRenderTarget,
             METHOD(hyxOSG::ExampleApplication, addRenderTarget, (hyxOSG::RenderTarget*, osg::Node*),
                    static_cast<osg::Node*>(nullptr))),
    FUNCTION(ExampleApplication_removeRenderTarget,
             METHOD(hyxOSG::ExampleApplication, removeRenderTarget, (hyxOSG::RenderTarget*))),
};

} // namespace

ROWS(capture_rows);
