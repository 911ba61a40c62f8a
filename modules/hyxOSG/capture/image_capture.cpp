// Numbered image files.
#include "platform/hyxOSG/capture/image_capture.h"

#include "binding/vocabulary/rows.h"
#include "platform/hyxSDK/simulation.h"

namespace {

constexpr Declared image_capture_rows[] = {
    FUNCTION(new_ImageCapture, NEW(hyxOSG::ImageCapture, (hyxSDK::Simulation*), nullptr)),
    FUNCTION(ImageCapture_getPrefix, METHOD(hyxOSG::ImageCapture, getPrefix, () const)),
    FUNCTION(ImageCapture_getPostfix, METHOD(hyxOSG::ImageCapture, getPostfix, () const)),
    FUNCTION(ImageCapture_getDirectoryPath, METHOD(hyxOSG::ImageCapture, getDirectoryPath, () const)),
    FUNCTION(ImageCapture_setPrefix, METHOD(hyxOSG::ImageCapture, setPrefix, (std::string const&))),
    FUNCTION(ImageCapture_setPostfix, METHOD(hyxOSG::ImageCapture, setPostfix, (std::string const&))),
    FUNCTION(ImageCapture_setDirectoryPath, METHOD(hyxOSG::ImageCapture, setDirectoryPath, (std::string const&))),
    FUNCTION(ImageCapture_writeImage, METHOD(hyxOSG::ImageCapture, writeImage, (osg::Image*, hyx::Index))),
    REGISTER(hyxOSG::ImageCapture, ImageCapture),
    INIT(ImageCapture),
};

} // namespace

ROWS(image_capture_rows);
