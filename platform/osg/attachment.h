// What every group asks before it takes a node in.
#pragma once

namespace osg {
class Group;
class Node;

/// Refuses rings, depths that a walk through the scene has no stack for, and groups below a geode, whose visitors take
/// all that it holds for drawables.
/// \throws std::invalid_argument when `parent` stands below `child`, would stand in a scene deeper than 1000 groups, or
/// is a geode and `child` no drawable
void requireAttachable(osg::Group const& parent, osg::Node const& child);

/// Adds `child` where it may stand. Throws as `requireAttachable`.
void attach(osg::Group& parent, osg::Node& child);

} // namespace osg
