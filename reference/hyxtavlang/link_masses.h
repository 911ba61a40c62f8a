// The masses of links that are one body.
#pragma once

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyx/values/affine_matrix4x4.h"

#include <LinearMath/btMatrix3x3.h>
#include <urdf_model/link.h>

namespace hyxtavlang {

/// Sums up, about the origin of the body's frame, what the links of a body weigh.
class LinkMasses {
public:
    /// Adds a link's mass, when it has any; `link` leads from the link's frame to the body's. A tensor that no body has
    /// counts as a point's.
    void add(urdf::Inertial const& inertial, hyx::AffineMatrix4x4 const& link);

    /// Gives the body the mass, the centre of mass and, where it is one of a body, the inertia.
    void giveTo(hyx::RigidBody& body) const;

private:
    double m_mass = 0;
    btVector3 m_moment{0, 0, 0};                                    ///< mass times centre
    btMatrix3x3 m_inertia = btMatrix3x3(0, 0, 0, 0, 0, 0, 0, 0, 0); ///< about the origin
};

} // namespace hyxtavlang
