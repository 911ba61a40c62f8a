// The colour tables that ScalarColorMap and the lidar colourings offer by name.
#pragma once

#include <osg/Vec4f>

#include <vector>

namespace hyxOSG {

// The 256 evenly spaced colours of a preset, numbered as ScalarColorMap::ColorRangePreset.
// Throws std::invalid_argument for an unknown number.
std::vector<osg::Vec4f> const& presetColors(int preset);

} // namespace hyxOSG
