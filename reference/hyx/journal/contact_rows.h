// The contacts of a step in journals.
#pragma once

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyxCollide/local_geometry_contact.h"

#include <span>
#include <string>
#include <vector>

namespace hyx {

/// What the numbers of a contact point are: its bodies and geometries by their places, -1 for what is not recorded; the
/// point; the normal from the first to the second; the force on the second in newtons; the penetration in metres.
std::vector<std::string> const& contactColumns();

/// The number of points at which these bodies are touched, then the points.
void addContacts(std::vector<double>& numbers, hyxCollide::LocalGeometryContactVector const& contacts,
                 RigidBodyPtrVector const& bodies);

/// Throws std::runtime_error for what no contacts of so many bodies can be.
void requireContacts(std::span<double const> numbers, size_t numBodies);
/// The contacts of these bodies.
hyxCollide::LocalGeometryContactVector contactsOf(std::span<double const> numbers, RigidBodyPtrVector const& bodies);

} // namespace hyx
