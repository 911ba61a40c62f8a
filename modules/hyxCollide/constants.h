// The enumerators of shapes.
#pragma once

#include "binding/runtime/integer_constants.h"
#include "platform/hyxCollide/shape.h"

namespace modules {

inline constexpr runtime::Constant shape_constants[] = {
    {"Shape_BOX", hyxCollide::Shape::BOX},           {"Shape_SPHERE", hyxCollide::Shape::SPHERE},
    {"Shape_CYLINDER", hyxCollide::Shape::CYLINDER}, {"Shape_CAPSULE", hyxCollide::Shape::CAPSULE},
    {"Shape_CONE", hyxCollide::Shape::CONE},         {"Shape_PLANE", hyxCollide::Shape::PLANE},
    {"Shape_TRIMESH", hyxCollide::Shape::TRIMESH},   {"Shape_HEIGHT_FIELD", hyxCollide::Shape::HEIGHT_FIELD},
    {"Shape_COMPOUND", hyxCollide::Shape::COMPOUND},
};

} // namespace modules
