// Contacts and the order of objects, kept so that a restored world goes on as the saved one did.
#include "platform/hyxCollide/geometry.h"
#include "reference/machinery/bullet/contact_response.h"
#include "reference/machinery/bullet/geometry_implementation.h"
#include "reference/machinery/bullet/physics_world.h"
#include "reference/machinery/bullet/rigid_body_implementation.h"
#include "reference/machinery/files/state_bytes.h"

#include <BulletCollision/BroadphaseCollision/btBroadphaseProxy.h>

#include <algorithm>
#include <cstring>
#include <numeric>
#include <tuple>
#include <unordered_map>

namespace hyx {

namespace {

/// The contacts of a pair of parts; objects by their place in the simulation.
struct SavedContacts {
    int objects[2];
    int parts[2];
    int numPoints;
    btManifoldPoint points[MANIFOLD_CACHE_SIZE];

    bool isOf(int first, int second, btPersistentManifold const& manifold) const {
        return objects[0] == first && objects[1] == second && parts[0] == manifold.m_companionIdA &&
               parts[1] == manifold.m_companionIdB && numPoints >= 1 && numPoints <= MANIFOLD_CACHE_SIZE;
    }
};

/// Into cleared memory, one by one: between a point's values are bytes that nobody set, and the same contacts are to be
/// the same state.
void keepPoint(btManifoldPoint const& point, btManifoldPoint& kept) {
    auto const take = [&](auto... members) { ((kept.*members = point.*members), ...); };
    using Point = btManifoldPoint;
    take(&Point::m_localPointA, &Point::m_localPointB, &Point::m_positionWorldOnA, &Point::m_positionWorldOnB,
         &Point::m_normalWorldOnB, &Point::m_distance1, &Point::m_lateralFrictionDir1, &Point::m_lateralFrictionDir2);
    take(&Point::m_combinedFriction, &Point::m_combinedRollingFriction, &Point::m_combinedSpinningFriction,
         &Point::m_combinedRestitution, &Point::m_contactCFM, &Point::m_contactERP, &Point::m_frictionCFM);
    take(&Point::m_partId0, &Point::m_partId1, &Point::m_index0, &Point::m_index1, &Point::m_contactPointFlags,
         &Point::m_lifeTime);
    take(&Point::m_appliedImpulse, &Point::m_appliedImpulseLateral1, &Point::m_appliedImpulseLateral2,
         &Point::m_prevRHS, &Point::m_contactMotion1, &Point::m_contactMotion2);
}

int numberOf(btCollisionObject const& object) {
    return object.getBroadphaseHandle() ? object.getBroadphaseHandle()->m_uniqueId : -1;
}

/// By the order in which bullet's pairs have them; an object that is not in the world is at -1.
std::vector<int> placesOf(std::vector<btCollisionObject*> const& objects) {
    std::vector<int> order(objects.size());
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(), [&](int a, int b) { return numberOf(*objects[a]) < numberOf(*objects[b]); });
    std::vector<int> places(objects.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        places[order[i]] = objects[order[i]]->getBroadphaseHandle() ? static_cast<int>(i) : -1;
    return places;
}

void putPoints(btPersistentManifold& manifold, SavedContacts const& saved) {
    manifold.clearManifold();
    manifold.setNumContacts(saved.numPoints);
    for (int i = 0; i < saved.numPoints; ++i) {
        manifold.getContactPoint(i) = saved.points[i];
        manifold.getContactPoint(i).m_userPersistentData = nullptr;
    }
}

} // namespace

void PhysicsWorld::exchangeState(StateBytes& bytes, std::vector<RigidBody*> const& bodies,
                                 std::vector<hyxCollide::Geometry*> const& geometries) {
    showContacts(std::nullopt);
    std::vector<btCollisionObject*> objects;
    for (RigidBody* body : bodies)
        objects.push_back(&body->implementation().bullet);
    for (hyxCollide::Geometry* geometry : geometries)
        objects.push_back(&geometry->implementation().object);
    std::unordered_map<btCollisionObject const*, int> numbers;
    for (std::size_t i = 0; i < objects.size(); ++i)
        numbers[objects[i]] = static_cast<int>(i);
    std::vector<int> places = placesOf(objects);
    std::vector<int> const now = places;
    bytes(places, m_timeStep);
    std::vector<SavedContacts> contacts;
    if (!bytes.restores())
        for (int i = 0; i < m_dispatcher->getNumManifolds(); ++i) {
            btPersistentManifold const& manifold = *m_dispatcher->getManifoldByIndexInternal(i);
            if (manifold.getNumContacts() == 0)
                continue;
            SavedContacts& saved = contacts.emplace_back();
            std::memset(static_cast<void*>(&saved), 0, sizeof saved);
            saved.objects[0] = numbers[manifold.getBody0()];
            saved.objects[1] = numbers[manifold.getBody1()];
            saved.parts[0] = manifold.m_companionIdA;
            saved.parts[1] = manifold.m_companionIdB;
            saved.numPoints = manifold.getNumContacts();
            for (int k = 0; k < saved.numPoints; ++k)
                keepPoint(manifold.getContactPoint(k), saved.points[k]);
        }
    bytes(contacts);
    if (!bytes.restores())
        return;
    if (places != now && places.size() == now.size()) {
        std::vector<int> order(objects.size());
        std::iota(order.begin(), order.end(), 0);
        std::sort(order.begin(), order.end(), [&](int a, int b) { return places[a] < places[b]; });
        enterAnew(order, bodies, geometries);
    }
    findContacts();
    for (int i = 0; i < m_dispatcher->getNumManifolds(); ++i) {
        btPersistentManifold& manifold = *m_dispatcher->getManifoldByIndexInternal(i);
        int const first = numbers[manifold.getBody0()];
        int const second = numbers[manifold.getBody1()];
        auto const saved = std::find_if(contacts.begin(), contacts.end(),
                                        [&](SavedContacts const& each) { return each.isOf(first, second, manifold); });
        if (saved == contacts.end())
            manifold.clearManifold();
        else
            putPoints(manifold, *saved);
    }
}

void PhysicsWorld::enterAnew(std::vector<int> const& order, std::vector<RigidBody*> const& bodies,
                             std::vector<hyxCollide::Geometry*> const& geometries) {
    int const numBodies = static_cast<int>(bodies.size());
    for (int const i : order)
        i < numBodies ? remove(bodies[i]->implementation()) : remove(*geometries[i - numBodies]);
    for (int const i : order)
        i < numBodies ? add(bodies[i]->implementation()) : add(*geometries[i - numBodies]);
}

bool PhysicsWorld::isBefore(btPersistentManifold const* first, btPersistentManifold const* second) {
    auto const key = [](btPersistentManifold const& manifold) {
        return std::make_tuple(numberOf(*manifold.getBody0()), numberOf(*manifold.getBody1()), manifold.m_companionIdA,
                               manifold.m_companionIdB);
    };
    return key(*first) < key(*second);
}

} // namespace hyx
