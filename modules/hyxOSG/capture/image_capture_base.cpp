// What all captures share: rate, limit, clock and size.
#include "platform/hyxOSG/capture/image_capture_base.h"

#include "binding/vocabulary/rows.h"
#include "platform/hyxSDK/simulation.h"

namespace {

constexpr Declared image_capture_base_rows[] = {
    FUNCTION(ImageCaptureBase_setFps, METHOD(hyxOSG::ImageCaptureBase, setFps, (double))),
    FUNCTION(ImageCaptureBase_getFps, METHOD(hyxOSG::ImageCaptureBase, getFps, () const)),
    FUNCTION(ImageCaptureBase_setMaxImages, METHOD(hyxOSG::ImageCaptureBase, setMaxImages, (int))),
    FUNCTION(ImageCaptureBase_startCapture, METHOD(hyxOSG::ImageCaptureBase, startCapture, (int), 0)),
    FUNCTION(ImageCaptureBase_stopCapture, METHOD(hyxOSG::ImageCaptureBase, stopCapture, ())),
    FUNCTION(ImageCaptureBase_getCaptureStarted, METHOD(hyxOSG::ImageCaptureBase, getCaptureStarted, () const)),
    FUNCTION(ImageCaptureBase_setSimulation, METHOD(hyxOSG::ImageCaptureBase, setSimulation, (hyxSDK::Simulation*))),
    FUNCTION(ImageCaptureBase_getSimulation, METHOD(hyxOSG::ImageCaptureBase, getSimulation, () const)),
    FUNCTION(ImageCaptureBase_setImageResolution,
             METHOD(hyxOSG::ImageCaptureBase, setImageResolution, (hyx::UInt, hyx::UInt))),
    FUNCTION(ImageCaptureBase_getImageResolution, METHOD(hyxOSG::ImageCaptureBase, getImageResolution, () const)),
    FUNCTION(ImageCaptureBase_getImageNum, METHOD(hyxOSG::ImageCaptureBase, getImageNum, () const)),
    FUNCTION(ImageCaptureBase_getDrawCallback, METHOD(hyxOSG::ImageCaptureBase, getDrawCallback, ())),
    FUNCTION(ImageCaptureBase_setEnableSyncWithSimulation,
             METHOD(hyxOSG::ImageCaptureBase, setEnableSyncWithSimulation, (bool))),
    FUNCTION(ImageCaptureBase_getEnableSyncWithSimulation,
             METHOD(hyxOSG::ImageCaptureBase, getEnableSyncWithSimulation, () const)),
    FUNCTION(ImageCaptureBase_resetTime, METHOD(hyxOSG::ImageCaptureBase, resetTime, ())),
    FUNCTION(ImageCaptureBase_apply, METHOD(hyxOSG::ImageCaptureBase, apply, (osg::RenderInfo&))),
    FUNCTION(ImageCaptureBase_writeImage, METHOD(hyxOSG::ImageCaptureBase, writeImage, (osg::Image*, hyx::Index))),
    REGISTER(hyxOSG::ImageCaptureBase, ImageCaptureBase),
};

} // namespace

ROWS(image_capture_base_rows);
