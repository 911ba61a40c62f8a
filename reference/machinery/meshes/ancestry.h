// Who stands above whom in the scene.
#pragma once

#include <osg/Group>

namespace hyxOSG {

/// Whether `group` is `node` or stands somewhere above it.
inline bool isAbove(osg::Node const* group, osg::Node const& node) {
    if (group == &node)
        return true;
    for (unsigned int i = 0; i < node.getNumParents(); ++i)
        if (isAbove(group, *node.getParent(i)))
            return true;
    return false;
}

} // namespace hyxOSG
