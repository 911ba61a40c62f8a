// Reading models and pictures from files that may be damaged, or made to do harm.
#pragma once

#include <string>

namespace osg {
class Image;
class Node;

/// The model of a file as it stands there; null, with the reason in the notification stream, when it cannot be read.
/// Nothing holds it until the caller does.
osg::Node* readModelFile(std::string const& file);

/// The same for a picture.
osg::Image* readPictureFile(std::string const& file);

} // namespace osg
