// The joint of robots that slide on a plane.
#pragma once

#include "reference/hyx/joints/joint_place.h"
#include "reference/machinery/bullet/constraint_implementation.h"

namespace hyx {

/// Lets the first body slide in a plane of the second, or of the world, and turn about the plane's normal.
class PlanarJoint : public Constraint {
public:
    /// Throws std::invalid_argument for a zero normal.
    PlanarJoint(Vec3 const& worldPoint, Vec3 const& worldNormal, RigidBody* body1, RigidBody* body2 = nullptr)
        : Constraint(body1, JointPlace(worldPoint, worldNormal).seenFrom(body1), body2,
                     JointPlace(worldPoint, worldNormal).seenFrom(body2)) {
        constexpr int x = 0, y = 1, z = 2;
        implementation().hold({z}, {x, y});
    }

protected:
    ~PlanarJoint() override = default;
};

} // namespace hyx
