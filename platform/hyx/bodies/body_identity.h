// The numbers by which sensors tell bodies from each other.
#pragma once

#include <cstdint>

namespace hyx {

class RigidBody;

/// The number of a body in all sensors of the process, from 1 on. It gets one when it is first asked for or seen, and
/// keeps it while anybody has the body.
std::uint32_t bodyIdentity(RigidBody& body);
/// The body of a number, null for one that is gone or was never given.
RigidBody* identifiedBody(std::uint32_t identity);
/// Lets go of the bodies that nobody else has any more.
void sweepIdentities();

} // namespace hyx
