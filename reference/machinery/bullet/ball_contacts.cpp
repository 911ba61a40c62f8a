// Forgets where a ball touched before looking for where it touches.
#include "reference/machinery/bullet/ball_contacts.h"

#include "reference/machinery/bullet/former_contacts.h"

#include <BulletCollision/CollisionDispatch/btCollisionCreateFunc.h>
#include <BulletCollision/CollisionDispatch/btCollisionDispatcher.h>
#include <BulletCollision/CollisionDispatch/btConvexConcaveCollisionAlgorithm.h>
#include <BulletCollision/CollisionDispatch/btConvexConvexAlgorithm.h>
#include <BulletCollision/CollisionDispatch/btManifoldResult.h>
#include <BulletCollision/NarrowPhaseCollision/btGjkEpaPenetrationDepthSolver.h>

namespace hyx {

namespace {

/// Bullet's search in `Base`, which only adds to the points that it knows.
template <class Base>
class BallAlgorithm : public Base {
public:
    using Base::Base;

    void processCollision(btCollisionObjectWrapper const* first, btCollisionObjectWrapper const* second,
                          btDispatcherInfo const& info, btManifoldResult* result) override {
        btManifoldArray known;
        this->getAllContactManifolds(known);
        if (known.size() == 0)
            return Base::processCollision(first, second, info, result);
        FormerContacts const former(*known[0]);
        known[0]->clearManifold();
        Base::processCollision(first, second, info, result);
        former.goOn(*known[0]);
    }
};

struct SolidCreation : btCollisionAlgorithmCreateFunc {
    btCollisionAlgorithm* CreateCollisionAlgorithm(btCollisionAlgorithmConstructionInfo& info,
                                                   btCollisionObjectWrapper const* first,
                                                   btCollisionObjectWrapper const* second) override {
        using Algorithm = BallAlgorithm<btConvexConvexAlgorithm>;
        constexpr int noPerturbation = 0;
        void* memory = info.m_dispatcher1->allocateCollisionAlgorithm(sizeof(Algorithm));
        return new (memory) Algorithm(info.m_manifold, info, first, second, &depth, noPerturbation, noPerturbation);
    }

    btGjkEpaPenetrationDepthSolver depth;
};

struct SurfaceCreation : btCollisionAlgorithmCreateFunc {
    explicit SurfaceCreation(bool swapped) { m_swapped = swapped; }

    btCollisionAlgorithm* CreateCollisionAlgorithm(btCollisionAlgorithmConstructionInfo& info,
                                                   btCollisionObjectWrapper const* first,
                                                   btCollisionObjectWrapper const* second) override {
        using Algorithm = BallAlgorithm<btConvexConcaveCollisionAlgorithm>;
        void* memory = info.m_dispatcher1->allocateCollisionAlgorithm(sizeof(Algorithm));
        return new (memory) Algorithm(info, first, second, m_swapped);
    }
};

} // namespace

void registerBallContacts(btCollisionDispatcher& dispatcher) {
    static SolidCreation ballAndSolid;
    static SurfaceCreation ballFirst(false);
    static SurfaceCreation surfaceFirst(true);
    for (int solid : {BOX_SHAPE_PROXYTYPE, CAPSULE_SHAPE_PROXYTYPE, CYLINDER_SHAPE_PROXYTYPE, CONE_SHAPE_PROXYTYPE,
                      CONVEX_HULL_SHAPE_PROXYTYPE}) {
        dispatcher.registerCollisionCreateFunc(SPHERE_SHAPE_PROXYTYPE, solid, &ballAndSolid);
        dispatcher.registerCollisionCreateFunc(solid, SPHERE_SHAPE_PROXYTYPE, &ballAndSolid);
    }
    for (int surface : {TRIANGLE_MESH_SHAPE_PROXYTYPE, TERRAIN_SHAPE_PROXYTYPE}) {
        dispatcher.registerCollisionCreateFunc(SPHERE_SHAPE_PROXYTYPE, surface, &ballFirst);
        dispatcher.registerCollisionCreateFunc(surface, SPHERE_SHAPE_PROXYTYPE, &surfaceFirst);
    }
}

} // namespace hyx
