// The decorator's textures in files.
#pragma once

#include <osg/Texture2D>

#include <string>

namespace hyxOSG {

/// A picture that is shown as large as it is, not repeated; null when the file cannot be read.
osg::ref_ptr<osg::Texture2D> loadScreenTexture(std::string const& file);

} // namespace hyxOSG
