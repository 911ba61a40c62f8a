// Contacts of balls, which touch a place in one point.
#pragma once

class btCollisionDispatcher;

namespace hyx {

/// Makes the dispatcher find the contacts of balls with solids, meshes and height fields anew in each step. Bullet
/// keeps points that the surface of a rolling ball has carried on, ahead of fast ones over centimetres: they hold it
/// back.
void registerBallContacts(btCollisionDispatcher& dispatcher);

} // namespace hyx
