// A legend's point is an intensity and a colour.
#include "platform/hyxOSG/renderers/lidar_output_renderer_legend_point.h"

namespace hyxOSG {

LidarOutputRendererLegendPoint::LidarOutputRendererLegendPoint() : intensity(0), color(1, 1, 1, 1) {}

LidarOutputRendererLegendPoint::LidarOutputRendererLegendPoint(float intensity, osg::Vec4 color)
    : intensity(intensity), color(color) {}

} // namespace hyxOSG
