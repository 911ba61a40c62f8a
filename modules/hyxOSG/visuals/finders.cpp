// Rows of the functions that find visuals.
#include "platform/hyxOSG/visuals/finders.h"

#include "binding/vocabulary/rows.h"
#include "platform/hyxCollide/geometry.h"
#include "platform/hyxOSG/nodes/frame_trajectory_drawable.h"
#include "platform/hyxOSG/nodes/geometry_node.h"
#include "platform/hyxOSG/nodes/particle_system_drawable.h"
#include "platform/hyxOSG/nodes/rigid_body_system_drawable.h"

#include <osgText/Text>

namespace {

constexpr Declared finders_rows[] = {
    FUNCTION(findGeometryNode, FREE(hyxOSG::findGeometryNode, (hyxCollide::Geometry const*, osg::Group*))),
    FUNCTION(findParticleSystemDrawable, FREE(hyxOSG::findParticleSystemDrawable, (osg::Group*))),
    FUNCTION(findRigidBodySystemDrawable, FREE(hyxOSG::findRigidBodySystemDrawable, (osg::Group*))),
    FUNCTION(findFrameTrajectoryDrawable, FREE(hyxOSG::findFrameTrajectoryDrawable, (osg::Group*))),
    FUNCTION(findText, FREE(hyxOSG::findText, (hyxCollide::Geometry const*, osg::Group*, size_t), size_t(0))),
};

} // namespace

ROWS(finders_rows);
