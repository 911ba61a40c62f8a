// The enumerators of _hyxCollide.
#pragma once

#include "platform/hyxCollide/shape.h"
#include "runtime/integer_constants.h"

namespace {

constexpr runtime::Constant constants[] = {
    {"Shape_BOX", hyxCollide::Shape::BOX},
    {"Shape_SPHERE", hyxCollide::Shape::SPHERE},
    {"Shape_CYLINDER", hyxCollide::Shape::CYLINDER},
    {"Shape_CAPSULE", hyxCollide::Shape::CAPSULE},
    {"Shape_CONE", hyxCollide::Shape::CONE},
    {"Shape_PLANE", hyxCollide::Shape::PLANE},
    {"Shape_TRIMESH", hyxCollide::Shape::TRIMESH},
    {"Shape_HEIGHT_FIELD", hyxCollide::Shape::HEIGHT_FIELD},
    {"Shape_COMPOUND", hyxCollide::Shape::COMPOUND},
};

} // namespace
