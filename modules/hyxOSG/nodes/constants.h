// The enumerators of the nodes classes.
#pragma once

#include "binding/runtime/integer_constants.h"
#include "platform/hyxOSG/nodes/geometry_node.h"
#include "platform/hyxOSG/nodes/particle_system_drawable.h"

namespace modules {

inline constexpr runtime::Constant geometry_node_constants[] = {
    {"GeometryNode_RENDER_DATA", hyxOSG::GeometryNode::RENDER_DATA},
    {"GeometryNode_GEOMETRY_DATA", hyxOSG::GeometryNode::GEOMETRY_DATA},
};

inline constexpr runtime::Constant particle_system_drawable_constants[] = {
    {"ParticleSystemDrawable_SPRITES", hyxOSG::ParticleSystemDrawable::SPRITES},
    {"ParticleSystemDrawable_QUAD_SPRITES", hyxOSG::ParticleSystemDrawable::QUAD_SPRITES},
    {"ParticleSystemDrawable_TRIANGLES", hyxOSG::ParticleSystemDrawable::TRIANGLES},
    {"ParticleSystemDrawable_SIMPLE_SPRITES", hyxOSG::ParticleSystemDrawable::SIMPLE_SPRITES},
    {"ParticleSystemDrawable_ROTATION_SPRITES", hyxOSG::ParticleSystemDrawable::ROTATION_SPRITES},
    {"ParticleSystemDrawable_ALPHA_SPRITES", hyxOSG::ParticleSystemDrawable::ALPHA_SPRITES},
};

} // namespace modules
