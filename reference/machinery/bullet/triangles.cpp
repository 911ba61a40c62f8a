// Nearest points of triangles, and what lies around a point of a surface.
#include "reference/machinery/bullet/triangles.h"

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

} // namespace

btVector3 nearestOfTriangle(btVector3 const& point, btVector3 const* corners) {
    btVoronoiSimplexSolver solver;
    btSubSimplexClosestResult nearest;
    solver.closestPtPointTriangle(point, corners[0], corners[1], corners[2], nearest);
    return nearest.m_closestPointOnSimplex;
}

bool goesOn(btConcaveShape const& surface, btVector3 const& point, btVector3 const& normal, double near,
            double leaning) {
    Continuation search(point, normal, near, leaning);
    btVector3 const around(near, near, near);
    surface.processAllTriangles(&search, point - around, point + around);
    return search.found;
}

} // namespace hyx
