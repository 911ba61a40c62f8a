// Contacts of cylinders and cones with solids of flat faces.
#pragma once

class btCollisionDispatcher;

namespace hyx {

/// Lets cylinders and cones stand on others with more than the one point that is nearest.
void registerFlatEndContacts(btCollisionDispatcher& dispatcher);

} // namespace hyx
