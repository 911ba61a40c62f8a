// Answers what touches what, and what rays meet.
#include "platform/hyxCollide/compound.h"
#include "platform/hyxCollide/trimesh.h"
#include "reference/machinery/bullet/bullet_values.h"
#include "reference/machinery/bullet/contact_response.h"
#include "reference/machinery/bullet/exact_ray.h"
#include "reference/machinery/bullet/geometry_implementation.h"
#include "reference/machinery/bullet/physics_world.h"

#include <BulletCollision/BroadphaseCollision/btDbvtBroadphase.h>
#include <BulletCollision/CollisionDispatch/btCollisionWorld.h>
#include <BulletCollision/CollisionShapes/btCompoundShape.h>
#include <LinearMath/btAabbUtil2.h>

#include <algorithm>
#include <optional>

namespace hyx {

using hyxCollide::ContactPoint;
using hyxCollide::Geometry;
using hyxCollide::LocalGeometryContact;
using hyxCollide::LocalGeometryContactVector;
using hyxCollide::RayHit;

namespace {

ContactPoint copyPoint(btManifoldPoint const& point, Real timeStep) {
    ContactPoint copy;
    copy.point = fromBullet((point.getPositionWorldOnA() + point.getPositionWorldOnB()) * 0.5);
    // Bullet's normal leads from the second object to the first.
    copy.normal = fromBullet(-point.m_normalWorldOnB);
    copy.depth = -point.getDistance();
    copy.normalForce = point.m_appliedImpulse / timeStep;
    copy.tangentialForce = fromBullet(-(point.m_lateralFrictionDir1 * point.m_appliedImpulseLateral1 +
                                        point.m_lateralFrictionDir2 * point.m_appliedImpulseLateral2) /
                                      timeStep);
    return copy;
}

/// A point that is nearer than the skin of a shape but does not touch is kept by bullet for the next step only.
bool counts(btManifoldPoint const& point) {
    return point.getDistance() <= 0 || point.m_appliedImpulse > 0;
}

/// Gives every geometry that a ray may meet before `end` (a share of its way) to `cast`, by way of bullet's tree of
/// boxes.
template <class Cast>
struct RayWalk : btBroadphaseRayCallback {
    RayWalk(btVector3 const& from, btVector3 const& to, Real const& end, Cast cast)
        : from(from), to(to), end(end), cast(cast) {
        btVector3 const way = to - from;
        btVector3 const direction = way.normalized();
        for (int i = 0; i < 3; ++i) {
            m_rayDirectionInverse[i] = direction[i] == 0 ? BT_LARGE_FLOAT : 1 / direction[i];
            m_signs[i] = m_rayDirectionInverse[i] < 0;
        }
        m_lambda_max = direction.dot(way);
    }

    bool process(btBroadphaseProxy const* proxy) override {
        btScalar reach = end;
        btVector3 side;
        if (!btRayAabb(from, to, proxy->m_aabbMin, proxy->m_aabbMax, reach, side))
            return true;
        auto* object = static_cast<btCollisionObject*>(proxy->m_clientObject);
        for (Geometry* geometry : static_cast<hyxCollide::CollisionCarrier*>(object->getUserPointer())->geometries)
            if (geometry->getEnableCollisions())
                cast(*object, *geometry);
        return true;
    }

    btVector3 from;
    btVector3 to;
    Real const& end;
    Cast cast;
};

struct NearestHit : btCollisionWorld::ClosestRayResultCallback {
    using ClosestRayResultCallback::ClosestRayResultCallback;

    btScalar addSingleResult(btCollisionWorld::LocalRayResult& result, bool normalInWorld) override {
        triangle = result.m_localShapeInfo ? static_cast<UInt>(result.m_localShapeInfo->m_triangleIndex) : ~UInt(0);
        return ClosestRayResultCallback::addSingleResult(result, normalInWorld);
    }

    UInt triangle = ~UInt(0);
};

struct Meeting {
    Real fraction;
    btVector3 normal;
    UInt triangle = ~UInt(0);
};

/// Cuts the part of a ray from `begin` to `end` (shares of its way) down to what lies in a box. False for none.
bool cut(btVector3 const& from, btVector3 const& way, btVector3 const& low, btVector3 const& high, Real& begin,
         Real& end) {
    for (int i = 0; i < 3; ++i) {
        if (way[i] == 0 && (from[i] < low[i] || from[i] > high[i]))
            return false;
        if (way[i] == 0)
            continue;
        Real const one = (low[i] - from[i]) / way[i];
        Real const other = (high[i] - from[i]) / way[i];
        begin = std::max(begin, std::min(one, other));
        end = std::min(end, std::max(one, other));
    }
    return begin < end;
}

/// By bullet's own means, which follow a ray cell by cell: only near the shape, however long it is.
std::optional<Meeting> meetByBullet(btCollisionObject& object, btCollisionShape const& shape, btTransform const& place,
                                    btVector3 const& from, btVector3 const& to, Real end) {
    btVector3 low;
    btVector3 high;
    shape.getAabb(place, low, high);
    btVector3 const skin = 0.01 * (high - low) + btVector3(1, 1, 1) * 0.01; // no hit is lost on the box's own faces
    btVector3 const way = to - from;
    Real begin = 0;
    if (!cut(from, way, low - skin, high + skin, begin, end))
        return std::nullopt;
    btVector3 const first = from + way * begin;
    btVector3 const last = from + way * end;
    NearestHit nearest(first, last);
    btCollisionWorld::rayTestSingle(btTransform(btQuaternion::getIdentity(), first),
                                    btTransform(btQuaternion::getIdentity(), last), &object, &shape, place, nearest);
    if (!nearest.hasHit())
        return std::nullopt;
    return Meeting{begin + nearest.m_closestHitFraction * (end - begin), nearest.m_hitNormalWorld.normalized(),
                   nearest.triangle};
}

/// Where a ray meets a shape that stands at `place`, before `end`.
std::optional<Meeting> meet(btCollisionObject& object, hyxCollide::Shape const& shape, btCollisionShape const& bullet,
                            btTransform const& place, btVector3 const& from, btVector3 const& to, Real end) {
    if (shape.getType() == hyxCollide::Shape::COMPOUND) {
        auto const& whole = static_cast<hyxCollide::Compound const&>(shape);
        auto const& parts = static_cast<btCompoundShape const&>(bullet);
        std::optional<Meeting> nearest;
        for (int i = 0; i < parts.getNumChildShapes(); ++i)
            if (auto const found = meet(object, *whole.getShape(i), *parts.getChildShape(i),
                                        place * parts.getChildTransform(i), from, to, end)) {
                nearest = found;
                end = found->fraction;
            }
        return nearest;
    }
    // A mesh that bullet holds as a hull is convex.
    bool const hull = bullet.getShapeType() == CONVEX_HULL_SHAPE_PROXYTYPE;
    if (hull || hyxCollide::hasExactRay(shape)) {
        btVector3 const localFrom = place.invXform(from);
        btVector3 const localTo = place.invXform(to);
        auto const entry =
            hull ? hyxCollide::castConvexMeshRay(static_cast<hyxCollide::Trimesh const&>(shape), localFrom, localTo)
                 : hyxCollide::castExactRay(shape, localFrom, localTo);
        if (!entry || entry->fraction >= end)
            return std::nullopt;
        return Meeting{entry->fraction, place.getBasis() * entry->normal, entry->triangle};
    }
    return meetByBullet(object, bullet, place, from, to, end);
}

/// Where a ray meets one geometry, before `end`.
std::optional<Meeting> meet(btCollisionObject& object, Geometry const& geometry, btVector3 const& from,
                            btVector3 const& to, Real end) {
    btCollisionShape const* shape = geometry.implementation().bullet.shape.get();
    btTransform const place =
        object.getCollisionShape() == shape ? object.getWorldTransform() : toBullet(geometry.getTransform());
    return meet(object, *geometry.getShape(), *shape, place, from, to, end);
}

/// Whether `first` and `second`, null for any, are among the two.
bool isBetween(Geometry const* one, Geometry const* other, Geometry const* first, Geometry const* second) {
    auto const among = [&](Geometry const* wanted) { return !wanted || wanted == one || wanted == other; };
    return among(first) && among(second);
}

} // namespace

void PhysicsWorld::showContacts(std::optional<LocalGeometryContactVector> contacts) {
    m_shownContacts = std::move(contacts);
}

LocalGeometryContactVector PhysicsWorld::contacts(Geometry const* first, Geometry const* second) const {
    LocalGeometryContactVector found;
    if (m_shownContacts) {
        for (LocalGeometryContact const& contact : *m_shownContacts)
            if (isBetween(contact.getGeometry(0), contact.getGeometry(1), first, second))
                found.push_back(contact);
        return found;
    }
    btCollisionDispatcher& dispatcher = *m_dispatcher;
    for (int i = 0; i < dispatcher.getNumManifolds(); ++i) {
        btPersistentManifold const& manifold = *dispatcher.getManifoldByIndexInternal(i);
        std::size_t const ofThisPair = found.size();
        for (int j = 0; j < manifold.getNumContacts(); ++j) {
            btManifoldPoint const& point = manifold.getContactPoint(j);
            Geometry* one = geometryAt(manifold.getBody0(), point.m_index0);
            Geometry* other = geometryAt(manifold.getBody1(), point.m_index1);
            if (!one || !other || !counts(point) || !isBetween(one, other, first, second))
                continue;
            auto place =
                std::find_if(found.begin() + ofThisPair, found.end(), [&](LocalGeometryContact const& contact) {
                    return contact.getGeometry(0) == one && contact.getGeometry(1) == other;
                });
            if (place == found.end())
                place = found.insert(place, LocalGeometryContact(one, other));
            place->points().push_back(copyPoint(point, m_timeStep));
        }
    }
    return found;
}

UInt PhysicsWorld::numContactPoints() const {
    UInt count = 0;
    if (m_shownContacts) {
        for (LocalGeometryContact const& contact : *m_shownContacts)
            count += contact.getNumPoints();
        return count;
    }
    btCollisionDispatcher& dispatcher = *m_dispatcher;
    for (int i = 0; i < dispatcher.getNumManifolds(); ++i) {
        btPersistentManifold const& manifold = *dispatcher.getManifoldByIndexInternal(i);
        for (int j = 0; j < manifold.getNumContacts(); ++j)
            count += counts(manifold.getContactPoint(j));
    }
    return count;
}

Vector<RayHit> PhysicsWorld::castRay(Vec3 const& fromPoint, Vec3 const& toPoint, RigidBody const* ignored,
                                     bool all) const {
    btVector3 const from = toBullet(fromPoint);
    btVector3 const to = toBullet(toPoint);
    Vector<RayHit> hits;
    Real const length = (toPoint - fromPoint).length();
    if (!(length > 0))
        return hits;
    bringBoxesUpToDate();
    Real end = 1;
    auto const cast = [&](btCollisionObject& object, Geometry& geometry) {
        if (ignored && geometry.getRigidBody() == ignored)
            return;
        auto const found = meet(object, geometry, from, to, end);
        if (!found)
            return;
        if (!all) {
            hits.clear();
            end = found->fraction;
        }
        hits.push_back({&geometry, fromBullet(from.lerp(to, found->fraction)), fromBullet(found->normal),
                        found->fraction * length, found->triangle});
    };
    RayWalk walk(from, to, end, cast);
    m_broadphase->rayTest(from, to, walk);
    std::stable_sort(hits.begin(), hits.end(),
                     [](RayHit const& a, RayHit const& b) { return a.distance < b.distance; });
    return hits;
}

hyxCollide::GeometryPtrVector PhysicsWorld::findGeometries(Vec3 const& lower, Vec3 const& upper) const {
    struct Finder : btBroadphaseAabbCallback {
        bool process(btBroadphaseProxy const* proxy) override {
            auto const& object = *static_cast<btCollisionObject const*>(proxy->m_clientObject);
            for (Geometry* geometry :
                 static_cast<hyxCollide::CollisionCarrier const*>(object.getUserPointer())->geometries) {
                Vec3 low;
                Vec3 high;
                geometry->getBound(low, high);
                if (TestAabbAgainstAabb2(toBullet(low), toBullet(high), lowest, highest))
                    found.push_back(geometry);
            }
            return true;
        }

        btVector3 lowest;
        btVector3 highest;
        hyxCollide::GeometryPtrVector found;
    } finder;

    bringBoxesUpToDate();
    finder.lowest = toBullet(lower);
    finder.highest = toBullet(upper);
    m_broadphase->aabbTest(finder.lowest, finder.highest, finder);
    return finder.found;
}

} // namespace hyx
