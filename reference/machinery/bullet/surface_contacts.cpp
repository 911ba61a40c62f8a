// The corners and rims of solids over triangles.
#include "reference/machinery/bullet/surface_contacts.h"

#include "reference/machinery/bullet/contact_points.h"
#include "reference/machinery/bullet/contact_response.h"
#include "reference/machinery/bullet/former_contacts.h"
#include "reference/machinery/bullet/low_points.h"
#include "reference/machinery/bullet/shape_size.h"
#include "reference/machinery/bullet/triangles.h"

#include <BulletCollision/CollisionDispatch/btCollisionDispatcher.h>
#include <BulletCollision/CollisionDispatch/btCollisionObjectWrapper.h>
#include <BulletCollision/CollisionDispatch/btConvexConcaveCollisionAlgorithm.h>
#include <BulletCollision/CollisionDispatch/btManifoldResult.h>
#include <BulletCollision/CollisionShapes/btConcaveShape.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace hyx {

namespace {

/// Of the solid's radius: corners that lie deeper below a triangle belong to another side of the surface.
constexpr double deepest = 0.3;

constexpr std::size_t fewCorners = 4;
constexpr std::size_t allCorners = 9;

constexpr double samePlane = 0.999;
constexpr double sameSide = 0.5;

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

/// The direction in which a surface has held a solid, where it has held it from one side; else zero.
btVector3 formerSideOf(btPersistentManifold const& manifold) {
    btVector3 sum(0, 0, 0);
    for (int i = 0; i < manifold.getNumContacts(); ++i) {
        btVector3 const& normal = manifold.getContactPoint(i).m_normalWorldOnB;
        if (normal.dot(sum) < 0)
            return {0, 0, 0};
        sum += normal;
    }
    return sum.fuzzyZero() ? sum : sum.normalized();
}

/// Finds the low points over each triangle, in the coordinates of the surface.
struct Finder : btTriangleCallback {
    Finder(btConcaveShape const& surface, btCollisionShape const& shape, btTransform const& place,
           btVector3 const& formerSide, double reach)
        : surface(surface),
          shape(shape),
          place(place),
          formerSide(formerSide),
          reach(reach),
          depth(deepest * shape.getAngularMotionDisc()),
          core(coreOf(shape)),
          most(reach > usualReach(shape.getAngularMotionDisc()) ? allCorners : fewCorners) {}

    void processTriangle(btVector3* corners, int, int) override {
        btVector3 normal = (corners[1] - corners[0]).cross(corners[2] - corners[0]);
        if (normal.length2() == 0)
            return;
        normal.normalize();
        bool const known = std::abs(normal.dot(formerSide)) > sameSide;
        double const side = normal.dot(known ? formerSide : place.getOrigin() - corners[0]);
        btVector3 const up = normal * (side < 0 ? -1 : 1);
        std::vector<Low> lows = lowsOver(corners, normal, up);
        if (!known && deepestOf(lows) > core)
            if (std::vector<Low> const others = lowsOver(corners, normal, -up); areBeyond(lows, others))
                lows = others;
        for (Low const& low : lows)
            if (low.distance < reach && low.distance > -depth)
                add(low);
    }

    std::vector<Low> lowsOver(btVector3 const* corners, btVector3 const& normal, btVector3 const& up) const {
        std::vector<Low> lows;
        for (btVector3 const& low : lowPoints(shape, -up * place.getBasis(), most)) {
            btVector3 const point = place * low;
            double const distance = up.dot(point - corners[0]);
            if (isOver(point, corners, normal))
                lows.push_back({point - up * distance, up, distance});
        }
        return lows;
    }

    /// Whether what lies over a triangle belongs to the other side of its plane than the solid's middle, of which
    /// points are `others`: where it lies less deep there, as the ends of what is long and thin do that lies across a
    /// ridge. But ends that went through the surface are drawn back to the middle.
    bool areBeyond(std::vector<Low> const& lows, std::vector<Low> const& others) const {
        if (others.empty() || deepestOf(others) >= deepestOf(lows))
            return false;
        return std::none_of(lows.begin(), lows.end(), [this](Low const& low) {
            btVector3 const point = low.point + low.normal * low.distance;
            return low.distance < 0 && crosses(surface, place.getOrigin(), point);
        });
    }

    static double deepestOf(std::vector<Low> const& lows) {
        double depth = 0;
        for (Low const& low : lows)
            depth = std::max(depth, -low.distance);
        return depth;
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

    btConcaveShape const& surface;
    btCollisionShape const& shape;
    btTransform const place;
    btVector3 const formerSide;
    double reach;
    double depth;
    double core;
    std::size_t most; ///< of what is fast, a higher end may touch in the same step
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
        btVector3 const formerSide = formerSideOf(manifold);
        btCollisionObjectWrapper const& ground = m_swapped ? *first : *second;
        btTransform const& surface = ground.getWorldTransform();
        // Bullet's search forgets points that slid on, and would keep those that rolled on.
        if (rolls)
            manifold.clearManifold();
        static_cast<ContactDispatcher*>(m_dispatcher)->share(manifold, [&] {
            btConvexConcaveCollisionAlgorithm::processCollision(first, second, info, result);
        });
        result->setPersistentManifold(&manifold);
        double const reach = manifold.getContactBreakingThreshold();
        auto const& triangles = static_cast<btConcaveShape const&>(*ground.getCollisionShape());
        Finder finder(triangles, *solid.getCollisionShape(), surface.inverse() * solid.getWorldTransform(),
                      formerSide * surface.getBasis(), reach);
        btVector3 lower;
        btVector3 upper;
        solid.getCollisionShape()->getAabb(finder.place, lower, upper);
        btVector3 const around(reach, reach, reach);
        triangles.processAllTriangles(&finder, lower - around, upper + around);
        for (Low& low : finder.found) {
            low.point = surface * low.point;
            low.normal = surface.getBasis() * low.normal;
        }
        for (int i = manifold.getNumContacts() - 1; i >= 0; --i) {
            btManifoldPoint const& point = manifold.getContactPoint(i);
            // A point off the lowest moves against its plane by the spin of what rolls.
            bool const replaced = (point.m_contactPointFlags & leaningContact) && finder.meets(point.m_normalWorldOnB);
            // Of what is thinner than its contacts are deep, bullet finds the shorter way out, through the surface.
            bool const through = point.m_normalWorldOnB.dot(formerSide) < -sameSide;
            if (replaced || through || finder.has(point.getPositionWorldOnB()) ||
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
