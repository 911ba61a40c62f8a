// A shape goes to Python as what it is.
#pragma once

#include "binding/vocabulary/python_values.h"
#include "platform/hyxCollide/box.h"
#include "platform/hyxCollide/capsule.h"
#include "platform/hyxCollide/compound.h"
#include "platform/hyxCollide/cone.h"
#include "platform/hyxCollide/cylinder.h"
#include "platform/hyxCollide/height_field.h"
#include "platform/hyxCollide/plane.h"
#include "platform/hyxCollide/sphere.h"
#include "platform/hyxCollide/trimesh.h"

namespace modules {

inline PyObject* to_derived(hyxCollide::Shape* shape) {
    if (!shape)
        return Py_NewRef(Py_None);
    switch (shape->getType()) {
    case hyxCollide::Shape::BOX:
        return vocabulary::to_shared(static_cast<hyxCollide::Box*>(shape));
    case hyxCollide::Shape::SPHERE:
        return vocabulary::to_shared(static_cast<hyxCollide::Sphere*>(shape));
    case hyxCollide::Shape::CYLINDER:
        return vocabulary::to_shared(static_cast<hyxCollide::Cylinder*>(shape));
    case hyxCollide::Shape::CAPSULE:
        return vocabulary::to_shared(static_cast<hyxCollide::Capsule*>(shape));
    case hyxCollide::Shape::CONE:
        return vocabulary::to_shared(static_cast<hyxCollide::Cone*>(shape));
    case hyxCollide::Shape::PLANE:
        return vocabulary::to_shared(static_cast<hyxCollide::Plane*>(shape));
    case hyxCollide::Shape::TRIMESH:
        return vocabulary::to_shared(static_cast<hyxCollide::Trimesh*>(shape));
    case hyxCollide::Shape::HEIGHT_FIELD:
        return vocabulary::to_shared(static_cast<hyxCollide::HeightField*>(shape));
    case hyxCollide::Shape::COMPOUND:
        return vocabulary::to_shared(static_cast<hyxCollide::Compound*>(shape));
    }
    return vocabulary::to_shared(shape);
}

} // namespace modules
