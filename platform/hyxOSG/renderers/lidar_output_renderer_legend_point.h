// One entry of the table that colours lidar hit points by intensity.
#pragma once

#include <osg/Vec4>

#include <vector>

namespace hyxOSG {

/// An intensity and the colour that hit points of that intensity are drawn in. A plain value.
class LidarOutputRendererLegendPoint {
public:
    /// Intensity 0, opaque white.
    LidarOutputRendererLegendPoint();

    /// \param intensity where the colour applies, see LidarOutputRenderer::setIntensityColorFunctionFromLegend
    /// \param color red, green, blue and opacity, 0 to 1 each
    LidarOutputRendererLegendPoint(float intensity, osg::Vec4 color);

    /// Where the colour applies.
    float intensity;
    /// Red, green, blue and opacity, 0 to 1 each.
    osg::Vec4 color;
};

/// Legend points in any order.
using LidarOutputRendererLegend = std::vector<LidarOutputRendererLegendPoint>;

} // namespace hyxOSG
