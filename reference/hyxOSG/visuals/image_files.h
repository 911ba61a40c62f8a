// Image files as textures.
#pragma once

#include <osg/Image>
#include <osg/Texture2D>
#include <osg/ref_ptr>

#include <string>

namespace hyxOSG {

/// The picture in a file; null, with a notice, when it is missing, damaged or empty.
osg::ref_ptr<osg::Image> readImage(std::string const& file);

/// A smooth, mip-mapped texture. The same file and wrapping give the same texture as long as somebody holds it; null as
/// for readImage.
osg::ref_ptr<osg::Texture2D> readTexture(std::string const& file, bool repeat);

/// Tiles a texture outside 0..1, or draws its edge out.
void setRepeat(osg::Texture2D& texture, bool repeat);

} // namespace hyxOSG
