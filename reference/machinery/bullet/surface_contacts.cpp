// The corners and rims of solids over triangles.
#include "reference/machinery/bullet/surface_contacts.h"

#include "reference/machinery/bullet/contact_points.h"
#include "reference/machinery/bullet/contact_response.h"
#include "reference/machinery/bullet/former_contacts.h"
#include "reference/machinery/bullet/low_points.h"
#include "reference/machinery/bullet/triangles.h"

#include <BulletCollision/CollisionDispatch/btCollisionDispatcher.h>
#include <BulletCollision/CollisionDispatch/btCollisionObjectWrapper.h>
#include <BulletCollision/CollisionDispatch/btConvexConcaveCollisionAlgorithm.h>
#include <BulletCollision/CollisionDispatch/btManifoldResult.h>
#include <BulletCollision/CollisionShapes/btConcaveShape.h>

#include <algorithm>
#include <vector>

namespace hyx {

namespace {

/// Of the solid's radius: corners that lie deeper below a triangle belong to another side of the surface.
constexpr double deepest = 0.3;

constexpr double samePlane = 0.999;

/// Of the reach: how exactly a point is known to lie on a triangle.
constexpr double nearby = 0.05;
/// How exactly a normal is known.
constexpr double leaningSine = 0.05;

/// Whether a point lies over or under a triangle.
bool isOver(btVector3 const& point, btVector3 const* corners, btVector3 const& normal) {
    for (int i = 0; i < 3; ++i) {
        btVector3 const edge = corners[(i + 1) % 3] - corners[i];
        if (normal.dot(edge.cross(point - corners[i])) < 0)
            return false;
    }
    return true;
}

struct Low {
    btVector3 point;
    btVector3 normal;
    double distance;
};

/// Finds the low points over each triangle, in the coordinates of the surface.
struct Finder : btTriangleCallback {
    Finder(btCollisionShape const& shape, btTransform const& place, double reach)
        : shape(shape), place(place), reach(reach), depth(deepest * shape.getAngularMotionDisc()) {}

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
            if (distance < reach && distance > -depth && isOver(point, corners, normal))
                add({point - up * distance, up, distance});
        }
    }

    /// A point over the edge of two triangles belongs to both.
    void add(Low const& low) {
        for (Low const& other : found)
            if (other.point.distance2(low.point) < 1e-12)
                return;
        found.push_back(low);
    }

    /// Whether a point is one of the low ones, as far as can be told.
    bool has(btVector3 const& point) const {
        double const near = usualReach(shape.getAngularMotionDisc());
        return std::any_of(found.begin(), found.end(),
                           [&](Low const& low) { return low.point.distance2(point) < near * near; });
    }

    bool meets(btVector3 const& normal) const {
        return std::any_of(found.begin(), found.end(),
                           [&normal](Low const& low) { return low.normal.dot(normal) > samePlane; });
    }

    btCollisionShape const& shape;
    btTransform const place;
    double reach;
    double depth;
    std::vector<Low> found;
};

/// Whether a point with a normal adds nothing to low points: it lies between them, in their plane.
bool isBetween(btVector3 const& point, btVector3 const& normal, std::vector<Low> const& lows, double reach) {
    // Between, seen from every side: no line through the point has all of them on one side. The sides that count are
    // those along the lines to the low points.
    std::vector<btVector3> ways;
    for (Low const& low : lows)
        if (low.normal.dot(normal) > samePlane)
            ways.push_back(low.point - point);
    if (ways.size() < 2)
        return false;
    for (btVector3 const& way : ways) {
        btVector3 const across = normal.cross(way);
        double const limit = reach * way.length();
        bool left = false;
        bool right = false;
        bool behind = way.length() < reach;
        for (btVector3 const& other : ways) {
            left = left || across.dot(other) >= -limit;
            right = right || across.dot(other) <= limit;
            behind = behind || way.dot(other) < 0;
        }
        if (!left || !right || !behind)
            return false;
    }
    return true;
}

bool leansOver(btManifoldPoint const& point, btCollisionObjectWrapper const& ground, double reach) {
    btTransform const& place = ground.getWorldTransform();
    auto const& surface = static_cast<btConcaveShape const&>(*ground.getCollisionShape());
    return goesOn(surface, place.invXform(point.getPositionWorldOnB()), point.m_normalWorldOnB * place.getBasis(),
                  surface.getMargin() + nearby * reach, leaningSine);
}

bool canRoll(btCollisionShape const& shape) {
    int const type = shape.getShapeType();
    return type == CYLINDER_SHAPE_PROXYTYPE || type == CAPSULE_SHAPE_PROXYTYPE;
}

class SurfaceAlgorithm : public btConvexConcaveCollisionAlgorithm {
public:
    SurfaceAlgorithm(btCollisionAlgorithmConstructionInfo const& info, btCollisionObjectWrapper const* first,
                     btCollisionObjectWrapper const* second, bool swapped)
        : btConvexConcaveCollisionAlgorithm(info, first, second, swapped), m_swapped(swapped) {}

    void processCollision(btCollisionObjectWrapper const* first, btCollisionObjectWrapper const* second,
                          btDispatcherInfo const& info, btManifoldResult* result) override {
        btCollisionObjectWrapper const& solid = m_swapped ? *second : *first;
        bool const rolls = canRoll(*solid.getCollisionShape());
        btManifoldArray known;
        getAllContactManifolds(known);
        if (known.size() == 0)
            return;
        btPersistentManifold& manifold = *known[0];
        FormerContacts const former(manifold);
        // Bullet's search forgets points that slid on, and would keep those that rolled on.
        if (rolls)
            manifold.clearManifold();
        static_cast<ContactDispatcher*>(m_dispatcher)->share(manifold, [&] {
            btConvexConcaveCollisionAlgorithm::processCollision(first, second, info, result);
        });
        result->setPersistentManifold(&manifold);
        btCollisionObjectWrapper const& ground = m_swapped ? *first : *second;
        btTransform const& surface = ground.getWorldTransform();
        double const reach = manifold.getContactBreakingThreshold();
        Finder finder(*solid.getCollisionShape(), surface.inverse() * solid.getWorldTransform(), reach);
        btVector3 lower;
        btVector3 upper;
        solid.getCollisionShape()->getAabb(finder.place, lower, upper);
        btVector3 const around(reach, reach, reach);
        static_cast<btConcaveShape const*>(ground.getCollisionShape())
            ->processAllTriangles(&finder, lower - around, upper + around);
        for (Low& low : finder.found) {
            low.point = surface * low.point;
            low.normal = surface.getBasis() * low.normal;
        }
        for (int i = manifold.getNumContacts() - 1; i >= 0; --i) {
            btManifoldPoint const& point = manifold.getContactPoint(i);
            // A point off the lowest moves against its plane by the spin of what rolls.
            bool const replaced = (point.m_contactPointFlags & leaningContact) && finder.meets(point.m_normalWorldOnB);
            if (replaced || finder.has(point.getPositionWorldOnB()) ||
                isBetween(point.getPositionWorldOnB(), point.m_normalWorldOnB, finder.found, reach) ||
                leansOver(point, ground, usualReach(solid.getCollisionShape()->getAngularMotionDisc())))
                manifold.removeContactPoint(i);
        }
        int const numOthers = manifold.getNumContacts();
        // Bullet's manifolds of solids and surfaces have the solid first, however the pair came.
        for (Low const& low : finder.found)
            addPoint(*result, low.normal, low.point, low.distance);
        former.goOn(manifold, rolls ? 0 : numOthers);
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
