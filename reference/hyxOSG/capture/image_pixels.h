// Images as rows of plain RGB bytes, in the size that a file or an encoder wants.
#pragma once

#include <osg/Image>

#include <vector>

namespace hyxOSG {

/// Three bytes a pixel, with `alpha` four, no padding, upper row first. Memory is kept when it is large enough.
/// \param image RGB, RGBA, BGR, BGRA or grey bytes are copied; other pixels go through osg's colours.
/// \param width,height the size wanted; where the image has another one, it is scaled: each pixel is a weighted mean of
/// what it covers when shrunk, and interpolated between its neighbours when enlarged.
/// \throws std::invalid_argument for a null or empty image
void copyPixels(osg::Image const* image, unsigned width, unsigned height, bool alpha,
                std::vector<unsigned char>& pixels);

/// The same into an image of bytes, lower row first. Alpha is taken for that of what was drawn over (0, 0, 0, 0).
void copyImage(osg::Image const* image, unsigned width, unsigned height, bool alpha, osg::Image& copy);

/// \throws std::invalid_argument that says what to do when the image is null or has no pixels
void requirePixels(osg::Image const* image);

} // namespace hyxOSG
