// What every group asks before it takes a node in.
#pragma once

namespace osg {
class Group;
class Node;

/// Refuses rings, and depths that a walk through the scene has no stack for.
/// \throws std::invalid_argument when `parent` stands below `child`, or would stand in a scene deeper than 1000 groups
void requireAttachable(osg::Group const& parent, osg::Node const& child);

} // namespace osg
