// Rows of the off-screen cameras.
#include "platform/hyxOSG/capture/render_target.h"

#include "binding/vocabulary/rows.h"
#include "platform/hyxOSG/capture/image_capture_base.h"

namespace {

constexpr Declared render_target_rows[] = {
    FUNCTION(new_RenderTarget, NEW(hyxOSG::RenderTarget, (hyx::UInt, hyx::UInt))),
    FUNCTION(RenderTarget_setReferenceCamera, METHOD(hyxOSG::RenderTarget, setReferenceCamera, (osg::Camera const*))),
    FUNCTION(RenderTarget_setImageCapture, METHOD(hyxOSG::RenderTarget, setImageCapture, (hyxOSG::ImageCaptureBase*))),
    FUNCTION(RenderTarget_getImageCapture, METHOD(hyxOSG::RenderTarget, getImageCapture, () const)),
    FUNCTION(RenderTarget_setSize, METHOD(hyxOSG::RenderTarget, setSize, (hyx::UInt, hyx::UInt)),
             METHOD(hyxOSG::RenderTarget, setSize, (hyx::Vec2u))),
    FUNCTION(RenderTarget_getSize, METHOD(hyxOSG::RenderTarget, getSize, () const)),
    FUNCTION(RenderTarget_getCamera, METHOD(hyxOSG::RenderTarget, getCamera, () const)),
    FUNCTION(RenderTarget_addPreRenderCallback,
             METHOD(hyxOSG::RenderTarget, addPreRenderCallback, (osg::Camera::DrawCallback*))),
    FUNCTION(RenderTarget_setViewMatrixAsLookAt, METHOD(hyxOSG::RenderTarget, setViewMatrixAsLookAt,
                                                        (hyx::Vec3 const&, hyx::Vec3 const&, hyx::Vec3 const&))),
    FUNCTION(RenderTarget_setViewMatrixFromOtherCamera,
             METHOD(hyxOSG::RenderTarget, setViewMatrixFromOtherCamera, (osg::Camera const*))),
    FUNCTION(RenderTarget_setProjectionMatrixAsPerspective,
             METHOD(hyxOSG::RenderTarget, setProjectionMatrixAsPerspective, (double, double, double, double))),
    FUNCTION(RenderTarget_setProjectionMatrixFromOtherCamera,
             METHOD(hyxOSG::RenderTarget, setProjectionMatrixFromOtherCamera, (osg::Camera const*))),
    FUNCTION(RenderTarget_setProjectionMatrixAsOrtho, METHOD(hyxOSG::RenderTarget, setProjectionMatrixAsOrtho,
                                                             (double, double, double, double, double, double))),
    FUNCTION(RenderTarget_setComputeNearFarMode,
             METHOD(hyxOSG::RenderTarget, setComputeNearFarMode, (hyxOSG::RenderTarget::ComputeNearFarMode))),
    FUNCTION(RenderTarget_calculateScreenCoords,
             METHOD(hyxOSG::RenderTarget, calculateScreenCoords, (hyx::Vec3&) const)),
    FUNCTION(RenderTarget_setCameraCullMask, METHOD(hyxOSG::RenderTarget, setCameraCullMask, (int))),
    FUNCTION(RenderTarget_getCameraCullMask, METHOD(hyxOSG::RenderTarget, getCameraCullMask, () const)),
    REGISTER(hyxOSG::RenderTarget, RenderTarget),
    INIT(RenderTarget),
};

} // namespace

ROWS(render_target_rows);
