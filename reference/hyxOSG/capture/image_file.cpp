// Writes pictures with the scene-graph library's writers.

#include "reference/hyxOSG/capture/image_file.h"

#include "reference/hyxOSG/capture/image_pixels.h"

#include <osgDB/FileNameUtils>
#include <osgDB/Registry>

#include <stdexcept>

namespace hyxOSG {

void writeImageFile(osg::Image const& image, std::string const& file) {
    requirePixels(&image);
    // Fast compression: the default level takes twice the time for little.
    osg::ref_ptr<osgDB::Options> const options = new osgDB::Options("PNG_COMPRESSION 1");
    auto const result = osgDB::Registry::instance()->writeImage(image, file, options);
    if (!result.success()) {
        std::string const reason = result.notHandled()
                                       ? "no writer for the extension \"" + osgDB::getFileExtension(file) + "\""
                                       : "is the folder there, and the disk not full?";
        throw std::runtime_error("cannot write the image \"" + file + "\": " + reason);
    }
}

} // namespace hyxOSG
