// Pictures and models in files.
#pragma once

#include <string>

namespace osg {
class Image;
class Node;

/// Writes a picture in the format of the path's extension. What is not `oneOfMany` is on the disk for good when this
/// returns.
/// \throws std::filesystem::filesystem_error when the file cannot be written; the one that was there before stays
/// \throws std::runtime_error when no writer takes the picture, or the extension
void writeImage(osg::Image const& image, std::string const& path, bool oneOfMany = false);

/// Writes a model in the format of the path's extension, and beside it what belongs to it, such as materials. Throws
/// as `writeImage`.
void writeNode(osg::Node const& node, std::string const& path);

} // namespace osg
