// Pictures in files.
#pragma once

#include <osg/Image>

#include <string>

namespace hyxOSG {

/// Writes a picture in the format of the file name's extension.
/// \throws std::invalid_argument for a null or empty image
/// \throws std::runtime_error with the file's name and the reason when it cannot be written
void writeImageFile(osg::Image const& image, std::string const& file);

} // namespace hyxOSG
