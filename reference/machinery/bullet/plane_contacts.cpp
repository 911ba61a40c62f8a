// Closed forms of the contact of solids with planes.
#include "reference/machinery/bullet/plane_contacts.h"

#include <BulletCollision/BroadphaseCollision/btCollisionAlgorithm.h>
#include <BulletCollision/CollisionDispatch/btCollisionCreateFunc.h>
#include <BulletCollision/CollisionDispatch/btCollisionDispatcher.h>
#include <BulletCollision/CollisionDispatch/btCollisionObjectWrapper.h>
#include <BulletCollision/CollisionDispatch/btManifoldResult.h>
#include <BulletCollision/CollisionShapes/btBoxShape.h>
#include <BulletCollision/CollisionShapes/btCapsuleShape.h>
#include <BulletCollision/CollisionShapes/btConeShape.h>
#include <BulletCollision/CollisionShapes/btConvexHullShape.h>
#include <BulletCollision/CollisionShapes/btCylinderShape.h>
#include <BulletCollision/CollisionShapes/btSphereShape.h>
#include <BulletCollision/CollisionShapes/btStaticPlaneShape.h>

#include <algorithm>
#include <vector>

namespace hyx {

namespace {

/// The points of a solid that may touch a plane, in the solid's coordinates; `down` leads to the plane.
using Points = std::vector<btVector3>;

/// Four points of a circle about Y: the lowest and the highest, and those between.
void addRim(Points& points, double radius, double height, btVector3 const& down) {
    btVector3 lowest(down.x(), 0, down.z());
    lowest = lowest.length2() > 1e-12 ? lowest.normalized() * radius : btVector3(radius, 0, 0);
    btVector3 const middle(0, height, 0);
    btVector3 const aside(lowest.z(), 0, -lowest.x());
    points.insert(points.end(), {middle + lowest, middle - lowest, middle + aside, middle - aside});
}

Points lowPoints(btCollisionShape const& shape, btVector3 const& down) {
    Points points;
    switch (shape.getShapeType()) {
    case SPHERE_SHAPE_PROXYTYPE:
        points.push_back(down * static_cast<btSphereShape const&>(shape).getRadius());
        break;
    case CAPSULE_SHAPE_PROXYTYPE: {
        auto const& capsule = static_cast<btCapsuleShape const&>(shape);
        for (double const end : {-capsule.getHalfHeight(), capsule.getHalfHeight()})
            points.push_back(btVector3(0, end, 0) + down * capsule.getRadius());
        break;
    }
    case BOX_SHAPE_PROXYTYPE: {
        btVector3 const half = static_cast<btBoxShape const&>(shape).getHalfExtentsWithMargin();
        for (int i = 0; i < 8; ++i)
            points.emplace_back(i & 1 ? half.x() : -half.x(), i & 2 ? half.y() : -half.y(),
                                i & 4 ? half.z() : -half.z());
        break;
    }
    case CYLINDER_SHAPE_PROXYTYPE: {
        btVector3 const half = static_cast<btCylinderShape const&>(shape).getHalfExtentsWithMargin();
        addRim(points, half.x(), half.y(), down);
        addRim(points, half.x(), -half.y(), down);
        break;
    }
    case CONE_SHAPE_PROXYTYPE: {
        auto const& cone = static_cast<btConeShape const&>(shape);
        addRim(points, cone.getRadius(), -cone.getHeight() / 2, down);
        points.emplace_back(0, cone.getHeight() / 2, 0);
        break;
    }
    default: {
        auto const& hull = static_cast<btConvexHullShape const&>(shape);
        for (int i = 0; i < hull.getNumPoints(); ++i)
            points.push_back(hull.getScaledPoint(i));
    }
    }
    return points;
}

class PlaneAlgorithm : public btCollisionAlgorithm {
public:
    PlaneAlgorithm(btCollisionAlgorithmConstructionInfo const& info, btCollisionObjectWrapper const* first,
                   btCollisionObjectWrapper const* second, bool swapped)
        : btCollisionAlgorithm(info),
          m_manifold(info.m_manifold
                         ? info.m_manifold
                         : m_dispatcher->getNewManifold(first->getCollisionObject(), second->getCollisionObject())),
          m_owned(!info.m_manifold),
          m_swapped(swapped) {}

    ~PlaneAlgorithm() override {
        if (m_owned)
            m_dispatcher->releaseManifold(m_manifold);
    }

    void processCollision(btCollisionObjectWrapper const* first, btCollisionObjectWrapper const* second,
                          btDispatcherInfo const&, btManifoldResult* result) override {
        result->setPersistentManifold(m_manifold);
        btManifoldPoint former[MANIFOLD_CACHE_SIZE];
        int const numFormer = m_manifold->getNumContacts();
        for (int i = 0; i < numFormer; ++i)
            former[i] = m_manifold->getContactPoint(i);
        m_manifold->clearManifold();
        addPoints(m_swapped ? *second : *first, m_swapped ? *first : *second, *result);
        for (int i = 0; i < m_manifold->getNumContacts(); ++i)
            continueFrom(m_manifold->getContactPoint(i), former, numFormer);
    }

    btScalar calculateTimeOfImpact(btCollisionObject*, btCollisionObject*, btDispatcherInfo const&,
                                   btManifoldResult*) override {
        return 1;
    }

    void getAllContactManifolds(btManifoldArray& manifolds) override {
        if (m_owned)
            manifolds.push_back(m_manifold);
    }

private:
    struct Place {
        btVector3 point;
        double distance;
    };

    void addPoints(btCollisionObjectWrapper const& solid, btCollisionObjectWrapper const& flat,
                   btManifoldResult& result) {
        auto const& plane = static_cast<btStaticPlaneShape const&>(*flat.getCollisionShape());
        btVector3 const normal = flat.getWorldTransform().getBasis() * plane.getPlaneNormal();
        double const height = plane.getPlaneConstant() + normal.dot(flat.getWorldTransform().getOrigin());
        btTransform const& place = solid.getWorldTransform();
        double const reach = m_manifold->getContactBreakingThreshold();
        std::vector<Place> near;
        for (btVector3 const& point : lowPoints(*solid.getCollisionShape(), -normal * place.getBasis())) {
            btVector3 const inWorld = place * point;
            double const distance = normal.dot(inWorld) - height;
            if (distance < reach)
                near.push_back({inWorld, distance});
        }
        // Solids of few corners show their lowest; of others the manifold keeps the four that span most.
        if (near.size() > 4 && solid.getCollisionShape()->getShapeType() != CONVEX_HULL_SHAPE_PROXYTYPE) {
            std::stable_sort(near.begin(), near.end(),
                             [](Place const& a, Place const& b) { return a.distance < b.distance; });
            near.resize(4);
        }
        for (auto const& [point, distance] : near)
            result.addContactPoint(m_swapped ? -normal : normal, m_swapped ? point : point - normal * distance,
                                   distance);
    }

    /// The forces of the last step go on at the nearest point.
    void continueFrom(btManifoldPoint& point, btManifoldPoint* former, int numFormer) const {
        int nearest = -1;
        for (int i = 0; i < numFormer; ++i)
            if (former[i].m_lifeTime >= 0 &&
                (nearest < 0 || former[i].m_positionWorldOnB.distance2(point.m_positionWorldOnB) <
                                    former[nearest].m_positionWorldOnB.distance2(point.m_positionWorldOnB)))
                nearest = i;
        if (nearest < 0)
            return;
        btManifoldPoint& found = former[nearest];
        point.m_appliedImpulse = found.m_appliedImpulse;
        point.m_appliedImpulseLateral1 = found.m_appliedImpulseLateral1;
        point.m_appliedImpulseLateral2 = found.m_appliedImpulseLateral2;
        point.m_prevRHS = found.m_prevRHS;
        point.m_lifeTime = found.m_lifeTime + 1;
        found.m_lifeTime = -1;
    }

    btPersistentManifold* m_manifold;
    bool m_owned;
    bool m_swapped;
};

struct PlaneCreateFunc : btCollisionAlgorithmCreateFunc {
    explicit PlaneCreateFunc(bool swapped) { m_swapped = swapped; }

    btCollisionAlgorithm* CreateCollisionAlgorithm(btCollisionAlgorithmConstructionInfo& info,
                                                   btCollisionObjectWrapper const* first,
                                                   btCollisionObjectWrapper const* second) override {
        void* memory = info.m_dispatcher1->allocateCollisionAlgorithm(sizeof(PlaneAlgorithm));
        return new (memory) PlaneAlgorithm(info, first, second, m_swapped);
    }
};

} // namespace

void registerPlaneContacts(btCollisionDispatcher& dispatcher) {
    static PlaneCreateFunc solidFirst(false);
    static PlaneCreateFunc planeFirst(true);
    for (int type : {BOX_SHAPE_PROXYTYPE, SPHERE_SHAPE_PROXYTYPE, CAPSULE_SHAPE_PROXYTYPE, CYLINDER_SHAPE_PROXYTYPE,
                     CONE_SHAPE_PROXYTYPE, CONVEX_HULL_SHAPE_PROXYTYPE}) {
        dispatcher.registerCollisionCreateFunc(type, STATIC_PLANE_PROXYTYPE, &solidFirst);
        dispatcher.registerCollisionCreateFunc(STATIC_PLANE_PROXYTYPE, type, &planeFirst);
    }
}

} // namespace hyx
