// The visual of one body with all that may be chosen about it.
#pragma once

namespace osg {
class Group;
} // namespace osg

namespace hyx {
class RigidBody;
} // namespace hyx

namespace hyxOSG {

class RigidBodyRenderCache;

/// Like createVisual for a body; shape nodes are shared through `cache`, null for none.
osg::Group* createBodyVisual(hyx::RigidBody const& body, osg::Group& root, float detailRatio, bool evenIfSensor,
                             RigidBodyRenderCache* cache);

} // namespace hyxOSG
