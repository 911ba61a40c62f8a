// Writes what has pixels.

#include "reference/hyxOSG/capture/image_file.h"

#include "platform/osg/scene_files.h"
#include "reference/hyxOSG/capture/image_pixels.h"
#include "reference/hyxPython/native_work.h"

namespace hyxOSG {

void writeImageFile(osg::Image const& image, std::string const& file, bool oneOfMany) {
    requirePixels(&image);
    hyxPython::NativeWork const work;
    osg::writeImage(image, file, oneOfMany);
}

} // namespace hyxOSG
