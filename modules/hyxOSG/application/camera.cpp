// Rows of ExampleApplication: the camera and its home.
#include "binding/vocabulary/rows.h"
#include "platform/hyxOSG/application/example_application.h"

namespace {

constexpr Declared camera_rows[] = {
    FUNCTION(ExampleApplication_getCameraData, METHOD(hyxOSG::ExampleApplication, getCameraData, ())),
    FUNCTION(ExampleApplication_applyCameraData,
             METHOD(hyxOSG::ExampleApplication, applyCameraData, (hyxOSG::CameraData const&))),
    FUNCTION(ExampleApplication_getCameraHome,
             METHOD(hyxOSG::ExampleApplication, getCameraHome, (hyx::Vec3&, hyx::Vec3&, hyx::Vec3&) const)),
    FUNCTION(ExampleApplication_setCameraHome,
             METHOD(hyxOSG::ExampleApplication, setCameraHome, (hyx::Vec3 const&, hyx::Vec3 const&, hyx::Vec3 const&),
                    hyx::Vec3(0, 0, 1))),
    FUNCTION(ExampleApplication_isCameraHomeSet, METHOD(hyxOSG::ExampleApplication, isCameraHomeSet, () const)),
    FUNCTION(
        ExampleApplication_setOrbitCamera,
        METHOD(hyxOSG::ExampleApplication, setOrbitCamera, (hyxOSG::GeometryNode*, double, double, double, int), 0),
        METHOD(hyxOSG::ExampleApplication, setOrbitCamera,
               (hyxOSG::GeometryNode*, hyx::Vec3 const&, hyx::Vec3 const&, hyx::Vec3 const&, int), hyx::Vec3(0, 0, 1),
               0)),
    FUNCTION(ExampleApplication_getViewDirection, METHOD(hyxOSG::ExampleApplication, getViewDirection, ())),
    FUNCTION(ExampleApplication_getCamera, METHOD(hyxOSG::ExampleApplication, getCamera, ())),
    FUNCTION(ExampleApplication_getTextureCamera, METHOD(hyxOSG::ExampleApplication, getTextureCamera, ())),
    FUNCTION(ExampleApplication_getViewer, METHOD(hyxOSG::ExampleApplication, getViewer, ())),
    FUNCTION(ExampleApplication_getCameraManipulator, METHOD(hyxOSG::ExampleApplication, getCameraManipulator, ()),
             METHOD(hyxOSG::ExampleApplication, getCameraManipulator, () const)),
    FUNCTION(ExampleApplication_getPickHandler, METHOD(hyxOSG::ExampleApplication, getPickHandler, ()),
             METHOD(hyxOSG::ExampleApplication, getPickHandler, () const)),
    FUNCTION(ExampleApplication_setCoordinateSystemTransform,
             METHOD(hyxOSG::ExampleApplication, setCoordinateSystemTransform, (hyx::AffineMatrix4x4 const&))),
    FUNCTION(ExampleApplication_getCoordinateSystemTransform,
             METHOD(hyxOSG::ExampleApplication, getCoordinateSystemTransform, () const)),
    FUNCTION(ExampleApplication_setDebugRenderInverseMatrix,
             METHOD(hyxOSG::ExampleApplication, setDebugRenderInverseMatrix, (hyx::AffineMatrix4x4 const&))),
    FUNCTION(ExampleApplication_setGridSize, METHOD(hyxOSG::ExampleApplication, setGridSize, (hyx::Vec2 const&))),
    FUNCTION(ExampleApplication_getGridSize, METHOD(hyxOSG::ExampleApplication, getGridSize, () const)),
    FUNCTION(ExampleApplication_setGridResolution, METHOD(hyxOSG::ExampleApplication, setGridResolution, (hyx::Vec2u))),
    FUNCTION(ExampleApplication_getGridResolution, METHOD(hyxOSG::ExampleApplication, getGridResolution, () const)),
    FUNCTION(ExampleApplication_setEnableGrid, METHOD(hyxOSG::ExampleApplication, setEnableGrid, (bool))),
    FUNCTION(ExampleApplication_getEnableGrid, METHOD(hyxOSG::ExampleApplication, getEnableGrid, () const)),
    FUNCTION(ExampleApplication_setEnableCoordinateSystem,
             METHOD(hyxOSG::ExampleApplication, setEnableCoordinateSystem, (bool))),
    FUNCTION(ExampleApplication_getEnableCoordinateSystem,
             METHOD(hyxOSG::ExampleApplication, getEnableCoordinateSystem, () const)),
};

} // namespace

ROWS(camera_rows);
