// The masses of bodies of a model that are one body.
#pragma once

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyxtavlang/model_bodies.h"

#include <LinearMath/btMatrix3x3.h>

namespace hyxtavlang {

/// Sums up, about the origin of the whole body's frame, what its parts weigh.
class BodyMasses {
public:
    /// Adds a part's mass; `local` leads from the part's frame to the whole body's. A tensor that no body has counts as
    /// a point's.
    void add(tavlang::Physics3D::Body const& part, hyx::AffineMatrix4x4 const& local);

    /// Gives the body the mass, the centre of mass and, where it is one of a body, the inertia.
    void giveTo(hyx::RigidBody& body) const;

    /// Where the last part begins in its file.
    int line() const { return m_line; }

private:
    int m_line = 0;
    double m_mass = 0;
    btVector3 m_moment{0, 0, 0};                                    ///< mass times centre
    btMatrix3x3 m_inertia = btMatrix3x3(0, 0, 0, 0, 0, 0, 0, 0, 0); ///< about the origin
};

} // namespace hyxtavlang
