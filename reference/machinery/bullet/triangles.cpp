// Nearest points of triangles, and what lies around a point of a surface.
#include "reference/machinery/bullet/triangles.h"

#include <BulletCollision/NarrowPhaseCollision/btRaycastCallback.h>
#include <BulletCollision/NarrowPhaseCollision/btVoronoiSimplexSolver.h>

namespace hyx {

namespace {

struct Continuation : btTriangleCallback {
    Continuation(btVector3 const& point, btVector3 const& normal, double near, double leaning)
        : point(point), normal(normal), near(near), leaning(leaning) {}

    void processTriangle(btVector3* corners, int, int) override {
        btVector3 const place = nearestOfTriangle(point, corners);
        if (place.distance2(point) > near * near)
            return;
        for (int i = 0; i < 3; ++i) {
            btVector3 const way = corners[i] - place;
            double const length = way.length();
            found = found || (length > near && way.dot(normal) > leaning * length);
        }
    }

    btVector3 const point;
    btVector3 const normal;
    double const near;
    double const leaning;
    bool found = false;
};

struct Meeting : btTriangleRaycastCallback {
    using btTriangleRaycastCallback::btTriangleRaycastCallback;

    btScalar reportHit(btVector3 const&, btScalar fraction, int, int) override {
        found = true;
        return fraction;
    }

    bool found = false;
};

} // namespace

btVector3 nearestOfTriangle(btVector3 const& point, btVector3 const* corners) {
    btVoronoiSimplexSolver solver;
    btSubSimplexClosestResult nearest;
    solver.closestPtPointTriangle(point, corners[0], corners[1], corners[2], nearest);
    return nearest.m_closestPointOnSimplex;
}

bool crosses(btConcaveShape const& surface, btVector3 const& from, btVector3 const& to) {
    Meeting meeting(from, to);
    btVector3 lower = from;
    btVector3 upper = from;
    lower.setMin(to);
    upper.setMax(to);
    surface.processAllTriangles(&meeting, lower, upper);
    return meeting.found;
}

bool goesOn(btConcaveShape const& surface, btVector3 const& point, btVector3 const& normal, double near,
            double leaning) {
    Continuation search(point, normal, near, leaning);
    btVector3 const around(near, near, near);
    surface.processAllTriangles(&search, point - around, point + around);
    return search.found;
}

} // namespace hyx
