// Writes what has pixels.

#include "reference/hyxOSG/capture/image_file.h"

#include "platform/osg/scene_files.h"
#include "reference/hyxOSG/capture/image_pixels.h"

namespace hyxOSG {

void writeImageFile(osg::Image const& image, std::string const& file, bool oneOfMany) {
    requirePixels(&image);
    osg::writeImage(image, file, oneOfMany);
}

} // namespace hyxOSG
