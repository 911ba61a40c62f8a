// Where solids touch planes.
#pragma once

class btCollisionDispatcher;

namespace hyx {

/// Has all corners and rims that touch a plane found at once, where they are. Bullet finds one point a step and trusts
/// that bodies rock until there are enough.
void registerPlaneContacts(btCollisionDispatcher& dispatcher);

} // namespace hyx
