// Reference counting of scene-graph groups, as functions.
#pragma once

namespace osg {
class Group;

/// Takes one reference on `group`; nothing for null.
void Group_reference(osg::Group* group);

/// Releases one reference on `group`, which destroys it when it was the last; nothing for null.
void Group_unreference(osg::Group* group);

} // namespace osg
