// Closed forms of the contact of solids with planes.
#include "reference/machinery/bullet/plane_contacts.h"

#include "reference/machinery/bullet/former_contacts.h"
#include "reference/machinery/bullet/low_points.h"

#include <BulletCollision/BroadphaseCollision/btCollisionAlgorithm.h>
#include <BulletCollision/CollisionDispatch/btCollisionCreateFunc.h>
#include <BulletCollision/CollisionDispatch/btCollisionDispatcher.h>
#include <BulletCollision/CollisionDispatch/btCollisionObjectWrapper.h>
#include <BulletCollision/CollisionDispatch/btManifoldResult.h>
#include <BulletCollision/CollisionShapes/btStaticPlaneShape.h>

#include <algorithm>
#include <vector>

namespace hyx {

namespace {

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
        FormerContacts const former(*m_manifold);
        m_manifold->clearManifold();
        addPoints(m_swapped ? *second : *first, m_swapped ? *first : *second, *result);
        former.goOn(*m_manifold);
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
