// The colour functions of lidar points that need no script.
#pragma once

#include "platform/hyxOSG/renderers/lidar_output_renderer.h"

#include <osg/Vec4ub>

#include <utility>

namespace hyxOSG {

/// One of the ready-made colourings, over the intensities 0 to 1.
LidarOutputRenderer::IntensityState::ColorFunc presetFunction(int preset);

/// Linear between neighbouring legend points, the end colours beyond them; white without points.
LidarOutputRenderer::IntensityState::ColorFunc legendFunction(LidarOutputRendererLegend legend, float maxIntensity);

/// The intensities from the legend's first point, or 0, to its last one, or `maxIntensity`.
std::pair<float, float> legendEnds(LidarOutputRendererLegend const& legend, float maxIntensity);

/// Components outside 0 to 1 are clamped; what is not a number counts as 0.
osg::Vec4ub colorBytes(osg::Vec4f const& color);

} // namespace hyxOSG
