// Pictures that model files name.
#pragma once

#include <osg/Texture2D>

#include <string>

namespace hyxOSG {

/// The path of the file that a model in `folder` names: there, or there without its own folders.
std::string besideModel(std::string file, std::string const& folder);

/// A texture that repeats in both directions; null for no image.
osg::ref_ptr<osg::Texture2D> repeatedTexture(osg::Image* image);

/// The picture `file` in `folder`, or one of that name without its own folders, as a repeated texture; null when it
/// cannot be read. A trial comes first: readers of pictures die of damaged ones.
osg::ref_ptr<osg::Texture2D> modelPicture(std::string const& file, std::string const& folder);

} // namespace hyxOSG
