// The corners and rims of solids over triangles.
#include "reference/machinery/bullet/surface_contacts.h"

#include "reference/machinery/bullet/low_points.h"

#include <BulletCollision/CollisionDispatch/btCollisionDispatcher.h>
#include <BulletCollision/CollisionDispatch/btCollisionObjectWrapper.h>
#include <BulletCollision/CollisionDispatch/btConvexConcaveCollisionAlgorithm.h>
#include <BulletCollision/CollisionDispatch/btManifoldResult.h>
#include <BulletCollision/CollisionShapes/btConcaveShape.h>

namespace hyx {

namespace {

/// Of the solid's radius: corners that lie deeper below a triangle belong to another side of the surface.
constexpr double deepest = 0.3;

/// Whether a point lies over or under a triangle.
bool isOver(btVector3 const& point, btVector3 const* corners, btVector3 const& normal) {
    for (int i = 0; i < 3; ++i) {
        btVector3 const edge = corners[(i + 1) % 3] - corners[i];
        if (normal.dot(edge.cross(point - corners[i])) < 0)
            return false;
    }
    return true;
}

/// Reports the low points over each triangle, in the coordinates of the surface.
struct Finder : btTriangleCallback {
    Finder(btCollisionShape const& shape, btTransform const& place, btTransform const& surface,
           btManifoldResult& result)
        : shape(shape),
          place(place),
          surface(surface),
          result(result),
          reach(result.getPersistentManifold()->getContactBreakingThreshold()),
          depth(deepest * shape.getAngularMotionDisc()) {}

    void processTriangle(btVector3* corners, int, int) override {
        btVector3 normal = (corners[1] - corners[0]).cross(corners[2] - corners[0]);
        if (normal.length2() == 0)
            return;
        normal.normalize();
        double const side = normal.dot(place.getOrigin() - corners[0]) < 0 ? -1 : 1;
        btVector3 const up = normal * side;
        for (btVector3 const& low : lowPoints(shape, -up * place.getBasis())) {
            btVector3 const point = place * low;
            double const distance = up.dot(point - corners[0]);
            if (distance < reach && distance > -depth && isOver(point, corners, normal)) {
                // Bullet's manifolds of solids and surfaces have the solid first, however the pair came.
                result.addContactPoint(surface.getBasis() * up, surface * (point - up * distance), distance);
            }
        }
    }

    btCollisionShape const& shape;
    btTransform const place;
    btTransform const& surface;
    btManifoldResult& result;
    double reach;
    double depth;
};

class SurfaceAlgorithm : public btConvexConcaveCollisionAlgorithm {
public:
    SurfaceAlgorithm(btCollisionAlgorithmConstructionInfo const& info, btCollisionObjectWrapper const* first,
                     btCollisionObjectWrapper const* second, bool swapped)
        : btConvexConcaveCollisionAlgorithm(info, first, second, swapped), m_swapped(swapped) {}

    void processCollision(btCollisionObjectWrapper const* first, btCollisionObjectWrapper const* second,
                          btDispatcherInfo const& info, btManifoldResult* result) override {
        btConvexConcaveCollisionAlgorithm::processCollision(first, second, info, result);
        btCollisionObjectWrapper const& solid = m_swapped ? *second : *first;
        btCollisionObjectWrapper const& ground = m_swapped ? *first : *second;
        if (!result->getPersistentManifold())
            return;
        btTransform const& surface = ground.getWorldTransform();
        Finder finder(*solid.getCollisionShape(), surface.inverse() * solid.getWorldTransform(), surface, *result);
        btVector3 lower;
        btVector3 upper;
        solid.getCollisionShape()->getAabb(finder.place, lower, upper);
        btVector3 const around(finder.reach, finder.reach, finder.reach);
        static_cast<btConcaveShape const*>(ground.getCollisionShape())
            ->processAllTriangles(&finder, lower - around, upper + around);
    }

private:
    bool m_swapped;
};

struct SurfaceCreateFunc : btCollisionAlgorithmCreateFunc {
    explicit SurfaceCreateFunc(bool swapped) { m_swapped = swapped; }

    btCollisionAlgorithm* CreateCollisionAlgorithm(btCollisionAlgorithmConstructionInfo& info,
                                                   btCollisionObjectWrapper const* first,
                                                   btCollisionObjectWrapper const* second) override {
        void* memory = info.m_dispatcher1->allocateCollisionAlgorithm(sizeof(SurfaceAlgorithm));
        return new (memory) SurfaceAlgorithm(info, first, second, m_swapped);
    }
};

} // namespace

void registerSurfaceContacts(btCollisionDispatcher& dispatcher) {
    static SurfaceCreateFunc solidFirst(false);
    static SurfaceCreateFunc surfaceFirst(true);
    for (int solid : {BOX_SHAPE_PROXYTYPE, CAPSULE_SHAPE_PROXYTYPE, CYLINDER_SHAPE_PROXYTYPE, CONE_SHAPE_PROXYTYPE,
                      CONVEX_HULL_SHAPE_PROXYTYPE})
        for (int surface : {TRIANGLE_MESH_SHAPE_PROXYTYPE, TERRAIN_SHAPE_PROXYTYPE}) {
            dispatcher.registerCollisionCreateFunc(solid, surface, &solidFirst);
            dispatcher.registerCollisionCreateFunc(surface, solid, &surfaceFirst);
        }
}

} // namespace hyx
