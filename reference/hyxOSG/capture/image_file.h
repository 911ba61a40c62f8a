// Pictures in files.
#pragma once

#include <osg/Image>

#include <string>

namespace hyxOSG {

/// Writes a picture in the format of the file name's extension.
/// \throws std::invalid_argument for a null or empty image
/// \throws what osg::writeImage throws
void writeImageFile(osg::Image const& image, std::string const& file, bool oneOfMany = false);

} // namespace hyxOSG
