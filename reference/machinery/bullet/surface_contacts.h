// Where solids touch meshes and height fields.
#pragma once

class btCollisionDispatcher;

namespace hyx {

/// Adds the corners and rims that lie over a triangle to the one point for each triangle that bullet finds.
void registerSurfaceContacts(btCollisionDispatcher& dispatcher);

} // namespace hyx
