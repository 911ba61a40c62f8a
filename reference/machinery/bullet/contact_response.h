// What happens at contacts, in Bullet's hooks.
#pragma once

#include "platform/hyxCollide/geometry.h"

#include <BulletCollision/CollisionDispatch/btCollisionDispatcher.h>
#include <BulletCollision/NarrowPhaseCollision/btManifoldPoint.h>

namespace hyx {

/// Keeps pairs apart whose switches forbid contact, gives every contact point the behaviour of its two materials, and
/// looks ahead of bodies that move far in a step. Bullet's hooks are process-wide; the first dispatcher sets them.
class ContactDispatcher : public btCollisionDispatcher {
public:
    explicit ContactDispatcher(btCollisionConfiguration* configuration);

    bool needsCollision(btCollisionObject const* first, btCollisionObject const* second) override;
    btPersistentManifold* getNewManifold(btCollisionObject const* first, btCollisionObject const* second) override;
    void dispatchAllCollisionPairs(btOverlappingPairCache* pairs, btDispatcherInfo const& info,
                                   btDispatcher* dispatcher) override;

    /// Whether to give all pairs points that may have forces to go on from, however far apart they are.
    void setEverywhere(bool everywhere) { m_everywhere = everywhere; }

private:
    double reachOf(btCollisionObject const& first, btCollisionObject const& second) const;
    static void findContacts(btBroadphasePair& pair, btCollisionDispatcher& dispatcher, btDispatcherInfo const& info);

    double m_timeStep = 0;
    bool m_everywhere = false;
};

/// Among the flags of a contact point: it was found with a normal that leans over the edge of a smooth surface.
constexpr int leaningContact = 1 << 10;

/// The geometry on one side of a contact point, which the contact hook wrote into it; null where it did not.
hyxCollide::Geometry* geometryAt(btCollisionObject const* object, int index);

} // namespace hyx
