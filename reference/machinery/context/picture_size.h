// The sizes that windows, render targets and pictures may have.
#pragma once

namespace hyxOSG {

/// Pixels, each way.
inline constexpr unsigned long largestSide = 16384;

/// Whether there can be a picture of this size.
inline bool isPictureSize(unsigned long width, unsigned long height) {
    return width >= 1 && height >= 1 && width <= largestSide && height <= largestSide;
}

} // namespace hyxOSG
