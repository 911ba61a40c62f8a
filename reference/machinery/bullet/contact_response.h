// What happens at contacts, in Bullet's hooks.
#pragma once

#include "platform/hyxCollide/geometry.h"

#include <BulletCollision/CollisionDispatch/btCollisionDispatcher.h>
#include <BulletCollision/NarrowPhaseCollision/btManifoldPoint.h>

struct btCollisionObjectWrapper;

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

    /// What is searched within `share` adds to one manifold. Bullet's own look ahead at surfaces would put what it
    /// finds into manifolds that end with the search.
    btCollisionAlgorithm* findAlgorithm(btCollisionObjectWrapper const* first, btCollisionObjectWrapper const* second,
                                        btPersistentManifold* shared, ebtDispatcherQueryType type) override;

    template <class Search>
    void share(btPersistentManifold& manifold, Search const& search) {
        m_shared = &manifold;
        search();
        m_shared = nullptr;
    }

    /// Says for which parts contacts are looked for; manifolds remember the numbers of the parts that they are made
    /// for.
    void enter(btCollisionObjectWrapper const& first, btCollisionObjectWrapper const& second);

    /// How near surfaces of two objects are that may touch in this step.
    double reachOf(btCollisionObject const& first, btCollisionObject const& second) const;

private:
    static void findContacts(btBroadphasePair& pair, btCollisionDispatcher& dispatcher, btDispatcherInfo const& info);

    double m_timeStep = 0;
    btPersistentManifold* m_shared = nullptr;
    btCollisionObject const* m_entered = nullptr;
    int m_parts[2] = {0, 0};
};

/// Whether the switches of two geometries, or of what they are parts of, allow contact.
bool partsMayCollide(btCollisionShape const* first, btCollisionShape const* second);

/// Among the flags of a contact point: it was found with a normal that leans over the edge of a smooth surface.
constexpr int leaningContact = 1 << 10;

/// The geometry on one side of a contact point, which the contact hook wrote into it; null where it did not.
hyxCollide::Geometry* geometryAt(btCollisionObject const* object, int index);

} // namespace hyx
