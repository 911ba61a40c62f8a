// Adds points to manifolds.
#include "reference/machinery/bullet/contact_points.h"

#include <BulletCollision/NarrowPhaseCollision/btPersistentManifold.h>

#include <algorithm>

namespace hyx {

double usualReach(double radius) {
    return std::min(0.02, 0.1 * radius);
}

void addPoint(btManifoldResult& result, btVector3 const& normal, btVector3 const& point, double distance) {
    btPersistentManifold& manifold = *result.getPersistentManifold();
    if (manifold.getContactBreakingThreshold() <= usualReach(manifold.getContactProcessingThreshold())) {
        result.addContactPoint(normal, point, distance);
        return;
    }
    btPersistentManifold alone(manifold.getBody0(), manifold.getBody1(), 0, manifold.getContactBreakingThreshold(),
                               manifold.getContactProcessingThreshold());
    result.setPersistentManifold(&alone);
    result.addContactPoint(normal, point, distance);
    result.setPersistentManifold(&manifold);
    if (alone.getNumContacts() > 0)
        manifold.addManifoldPoint(alone.getContactPoint(0));
}

} // namespace hyx
