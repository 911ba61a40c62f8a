// Pictures that model files name.
#pragma once

#include <osg/Texture2D>

#include <string>

namespace hyxOSG {

/// The picture `file` in `folder`, or one of that name without its own folders, as a repeated texture; null when it
/// cannot be read. A trial comes first: readers of pictures die of damaged ones.
osg::ref_ptr<osg::Texture2D> modelPicture(std::string file, std::string const& folder);

} // namespace hyxOSG
