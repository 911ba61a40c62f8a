// Measures Bullet's shapes.
#include "reference/machinery/bullet/shape_size.h"

#include <BulletCollision/CollisionShapes/btCompoundShape.h>

#include <algorithm>
#include <cmath>

namespace hyx {

double coreOf(btCollisionShape const& shape) {
    if (shape.isConcave())
        return 0;
    btVector3 lower;
    btVector3 upper;
    if (!shape.isCompound()) {
        shape.getAabb(btTransform::getIdentity(), lower, upper);
        btVector3 const size = upper - lower;
        return size[size.minAxis()] / 2;
    }
    auto const& compound = static_cast<btCompoundShape const&>(shape);
    double least = shape.getAngularMotionDisc();
    for (int i = 0; i < compound.getNumChildShapes(); ++i)
        least = std::min(least, coreOf(*compound.getChildShape(i)));
    return least;
}

namespace {

/// Round shapes turn about their axis within themselves. Parts of compounds may be such, wheels above all.
btVector3 armsOf(btCollisionShape const& shape) {
    if (shape.isCompound() || shape.getShapeType() == SPHERE_SHAPE_PROXYTYPE)
        return {0, 0, 0};
    btVector3 lower;
    btVector3 upper;
    shape.getAabb(btTransform::getIdentity(), lower, upper);
    btVector3 corner = upper.absolute();
    corner.setMax(lower.absolute());
    int const type = shape.getShapeType();
    bool const isRound =
        type == CYLINDER_SHAPE_PROXYTYPE || type == CAPSULE_SHAPE_PROXYTYPE || type == CONE_SHAPE_PROXYTYPE;
    return {std::hypot(corner.y(), corner.z()), isRound ? 0 : std::hypot(corner.x(), corner.z()),
            std::hypot(corner.x(), corner.y())};
}

} // namespace

void measureShape(hyxCollide::CollisionCarrier& carrier, btCollisionShape const& shape) {
    carrier.radius = shape.getAngularMotionDisc();
    carrier.core = coreOf(shape);
    carrier.arms = armsOf(shape);
}

} // namespace hyx
