// Bodies that push or hold each other.
#pragma once

#include "reference/machinery/bullet/mechanism.h"

#include <memory>
#include <vector>

class btCollisionObject;
class btPersistentManifold;

namespace hyx {

/// What moves together is worked out together, and apart from all else: its effort does not depend on the rest of the
/// world.
struct Island {
    /// Those that stand or sleep are of no island; what moves by itself may be of several.
    std::vector<MovingBody*> bodies;
    std::vector<btPersistentManifold*> manifolds;
    std::vector<Mechanism*> mechanisms;
};

/// The body's state among `bodies`, which starts with what stands still.
MovingBody& movingBody(btCollisionObject const* object, std::vector<MovingBody>& bodies);

/// In the order of their first manifolds, then of their mechanisms; bodies that nothing touches or holds come last, in
/// one island for all of them.
std::vector<Island> findIslands(std::vector<MovingBody>& bodies, std::vector<btPersistentManifold*> const& manifolds,
                                std::vector<std::unique_ptr<Mechanism>> const& mechanisms);

} // namespace hyx
