// Where solids may touch flat ground.
#pragma once

#include <LinearMath/btVector3.h>

#include <cstddef>
#include <vector>

class btCollisionShape;

namespace hyx {

/// The points of a solid that may touch a plane, in the solid's coordinates; `down` leads to the plane. Of solids with
/// few corners the `most` lowest, and only the lowest of those that lie above each other; all of a hull, of which
/// manifolds keep the four that span most.
std::vector<btVector3> lowPoints(btCollisionShape const& shape, btVector3 const& down, std::size_t most = 4);

} // namespace hyx
