// Where balls touch solids and surfaces, found anew in each step.
#include "reference/machinery/bullet/ball_contacts.h"

#include "reference/machinery/bullet/contact_points.h"
#include "reference/machinery/bullet/former_contacts.h"
#include "reference/machinery/bullet/fresh_contacts.h"
#include "reference/machinery/bullet/triangles.h"

#include <BulletCollision/CollisionDispatch/btCollisionCreateFunc.h>
#include <BulletCollision/CollisionDispatch/btCollisionDispatcher.h>
#include <BulletCollision/CollisionDispatch/btConvexConvexAlgorithm.h>
#include <BulletCollision/CollisionDispatch/btManifoldResult.h>
#include <BulletCollision/CollisionShapes/btSphereShape.h>
#include <BulletCollision/NarrowPhaseCollision/btGjkEpaPenetrationDepthSolver.h>

#include <algorithm>
#include <vector>

namespace hyx {

namespace {

/// Metres, squared.
constexpr double samePoint2 = 1e-12;
/// Of the radius: how exactly a point is known to lie on an edge.
constexpr double edgeShare = 1e-4;
/// How exactly normals are known.
constexpr double exactSine = 1e-5;

/// Bullet's search only adds to the points that it knows.
class BallAlgorithm : public btConvexConvexAlgorithm {
public:
    using btConvexConvexAlgorithm::btConvexConvexAlgorithm;

    void processCollision(btCollisionObjectWrapper const* first, btCollisionObjectWrapper const* second,
                          btDispatcherInfo const& info, btManifoldResult* result) override {
        btManifoldArray known;
        getAllContactManifolds(known);
        if (known.size() == 0)
            return btConvexConvexAlgorithm::processCollision(first, second, info, result);
        FormerContacts const former(*known[0]);
        known[0]->clearManifold();
        btConvexConvexAlgorithm::processCollision(first, second, info, result);
        former.goOn(*known[0]);
    }
};

/// Where a ball is nearest to each triangle, in the coordinates of the surface.
struct NearTriangles : btTriangleCallback {
    NearTriangles(btVector3 const& center, double furthest) : center(center), furthest(furthest) {}

    void processTriangle(btVector3* corners, int, int) override {
        btVector3 const point = nearestOfTriangle(center, corners);
        double const distance2 = point.distance2(center);
        bool const known = std::any_of(found.begin(), found.end(),
                                       [&](btVector3 const& other) { return other.distance2(point) < samePoint2; });
        if (distance2 < furthest * furthest && distance2 > 0 && !known)
            found.push_back(point);
    }

    btVector3 const center;
    double const furthest;
    std::vector<btVector3> found;
};

struct FindOnSurface {
    void operator()(btCollisionObjectWrapper const& ball, btCollisionObjectWrapper const& ground, bool swapped,
                    btManifoldResult& result, double reach) const {
        btTransform const& place = ground.getWorldTransform();
        auto const& surface = static_cast<btConcaveShape const&>(*ground.getCollisionShape());
        double const radius = static_cast<btSphereShape const*>(ball.getCollisionShape())->getRadius();
        btVector3 const center = ball.getWorldTransform().getOrigin();
        NearTriangles search(place.invXform(center), radius + reach);
        btVector3 const around(radius + reach, radius + reach, radius + reach);
        surface.processAllTriangles(&search, search.center - around, search.center + around);
        for (btVector3 const& near : search.found) {
            btVector3 const out = (search.center - near).normalized();
            if (goesOn(surface, near, out, edgeShare * radius, exactSine))
                continue;
            btVector3 const normal = place.getBasis() * out;
            double const distance = near.distance(search.center) - radius;
            if (swapped)
                addPoint(result, -normal, center - normal * radius, distance);
            else
                addPoint(result, normal, place * near, distance);
        }
    }
};

struct SolidCreation : btCollisionAlgorithmCreateFunc {
    btCollisionAlgorithm* CreateCollisionAlgorithm(btCollisionAlgorithmConstructionInfo& info,
                                                   btCollisionObjectWrapper const* first,
                                                   btCollisionObjectWrapper const* second) override {
        constexpr int noPerturbation = 0;
        void* memory = info.m_dispatcher1->allocateCollisionAlgorithm(sizeof(BallAlgorithm));
        return new (memory) BallAlgorithm(info.m_manifold, info, first, second, &depth, noPerturbation, noPerturbation);
    }

    btGjkEpaPenetrationDepthSolver depth;
};

} // namespace

void registerBallContacts(btCollisionDispatcher& dispatcher) {
    static SolidCreation ballAndSolid;
    static FreshContacts<FindOnSurface>::Creation ballFirst(false);
    static FreshContacts<FindOnSurface>::Creation surfaceFirst(true);
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
