// Objects of the visualization library that its functions take or find, and that scripts make themselves.
#include "modules/osg/scene_graph_rows.h"
#include "platform/hyx/bodies/frame.h"
#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyxOSG/nodes/frame_trajectory_drawable.h"
#include "platform/hyxOSG/nodes/rigid_body_system_drawable.h"
#include "platform/hyxOSG/visuals/rigid_body_render_cache.h"

namespace {

constexpr Declared visual_objects_rows[] = {
    FUNCTION(new_RigidBodyRenderCache, NEW(hyxOSG::RigidBodyRenderCache, ())),
    FUNCTION(RigidBodyRenderCache_size, METHOD(hyxOSG::RigidBodyRenderCache, size, () const)),
    FUNCTION(RigidBodyRenderCache_clear, METHOD(hyxOSG::RigidBodyRenderCache, clear, ())),
    SHARED_CLASS_ROWS(hyxOSG::RigidBodyRenderCache, RigidBodyRenderCache),

    FUNCTION(new_RigidBodySystemDrawable, NEW(hyxOSG::RigidBodySystemDrawable, ())),
    FUNCTION(RigidBodySystemDrawable_add, METHOD(hyxOSG::RigidBodySystemDrawable, add, (hyx::RigidBody*))),
    FUNCTION(RigidBodySystemDrawable_remove, METHOD(hyxOSG::RigidBodySystemDrawable, remove, (hyx::RigidBody*))),
    FUNCTION(RigidBodySystemDrawable_getNumBodies, METHOD(hyxOSG::RigidBodySystemDrawable, getNumBodies, () const)),
    SHARED_CLASS_ROWS(hyxOSG::RigidBodySystemDrawable, RigidBodySystemDrawable),

    FUNCTION(new_FrameTrajectoryDrawable, NEW(hyxOSG::FrameTrajectoryDrawable, (hyx::UInt, hyx::Vec4f const&),
                                              hyx::UInt(100), hyx::Vec4f(1, 1, 1, 1))),
    FUNCTION(FrameTrajectoryDrawable_add, METHOD(hyxOSG::FrameTrajectoryDrawable, add, (hyx::Frame*))),
    FUNCTION(FrameTrajectoryDrawable_remove, METHOD(hyxOSG::FrameTrajectoryDrawable, remove, (hyx::Frame*))),
    FUNCTION(FrameTrajectoryDrawable_getNumFrames, METHOD(hyxOSG::FrameTrajectoryDrawable, getNumFrames, () const)),
    FUNCTION(FrameTrajectoryDrawable_getNumPoints, METHOD(hyxOSG::FrameTrajectoryDrawable, getNumPoints, () const)),
    FUNCTION(FrameTrajectoryDrawable_update, METHOD(hyxOSG::FrameTrajectoryDrawable, update, ())),
    FUNCTION(FrameTrajectoryDrawable_clear, METHOD(hyxOSG::FrameTrajectoryDrawable, clear, ())),
    SHARED_CLASS_ROWS(hyxOSG::FrameTrajectoryDrawable, FrameTrajectoryDrawable),
};

} // namespace

ROWS(visual_objects_rows);
