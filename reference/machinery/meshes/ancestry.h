// Who stands above whom in the scene.
#pragma once

#include <osg/Group>

namespace hyxOSG {

/// Whether `group` is `node` or stands somewhere above it.
bool isAbove(osg::Node const* group, osg::Node const& node);

} // namespace hyxOSG
