// Frames what moves, with some of what it stands on.
#include "reference/hyxOSG/application/first_view.h"

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyxCollide/geometry.h"
#include "platform/hyxOSG/nodes/geometry_node.h"
#include "reference/machinery/meshes/endless_geode.h"

#include <osg/NodeVisitor>

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

namespace hyxOSG {
namespace {

constexpr double muchLarger = 3;      ///< surroundings of so many times the size of what moves are cut off
constexpr double surroundings = 1.2;  ///< what is left of them, in sizes of what moves
constexpr double farthestGround = 10; ///< a ground farther below than so many sizes does not matter

bool moves(osg::Transform const& node) {
    auto const* shown = dynamic_cast<GeometryNode const*>(&node);
    if (!shown || !shown->getGeometry())
        return false;
    hyx::RigidBody const* const body = shown->getGeometry()->getRigidBody();
    return body && body->getMotionControl() != hyx::RigidBody::STATIC;
}

/// The boxes around all content and around what moves, and where planes are.
class Surveyor : public osg::ComputeBoundsVisitor {
public:
    void apply(osg::Transform& transform) override {
        bool const former = m_moving;
        m_moving = m_moving || moves(transform);
        osg::ComputeBoundsVisitor::apply(transform);
        m_moving = former;
    }

    void apply(osg::Geode& geode) override {
        if (!dynamic_cast<EndlessGeode const*>(&geode)) {
            traverse(geode);
        } else {
            osg::Matrix const matrix = _matrixStack.empty() ? osg::Matrix() : _matrixStack.back();
            osg::Vec3d normal(matrix(2, 0), matrix(2, 1), matrix(2, 2));
            normal.normalize();
            planes.emplace_back(normal, osg::Vec3d(matrix.getTrans()));
        }
    }

    void apply(osg::Drawable& drawable) override {
        osg::BoundingBox const former = _bb;
        if (m_moving) {
            _bb = moving;
            osg::ComputeBoundsVisitor::apply(drawable);
            moving = _bb;
            _bb = former;
        }
        osg::ComputeBoundsVisitor::apply(drawable);
    }

    osg::BoundingBox moving;
    std::vector<osg::Plane> planes;

private:
    bool m_moving = false;
};

/// The height of the ground below `place`: of the highest plane, or of what lies lowest.
std::optional<double> groundBelow(osg::Vec3d const& place, Surveyor& seen) {
    std::optional<double> ground;
    if (seen.getBoundingBox().zMin() < place.z())
        ground = seen.getBoundingBox().zMin();
    for (osg::Plane const& plane : seen.planes) {
        if (std::abs(plane[2]) < 0.5)
            continue;
        double const height = place.z() - plane.distance(place) / plane[2];
        if (height < place.z() && (!ground || height < *ground))
            ground = height;
    }
    return ground;
}

osg::BoundingBox withGround(osg::BoundingBox box, Surveyor& seen) {
    auto const ground = groundBelow(box.center(), seen);
    if (ground && *ground < box.zMin() && box.center().z() - *ground < farthestGround * box.radius())
        box.zMin() = static_cast<float>(*ground);
    return box;
}

osg::BoundingBox framed(Surveyor& seen) {
    osg::BoundingBox const all = seen.getBoundingBox();
    if (!seen.moving.valid())
        return all;
    osg::BoundingBox const subject = withGround(seen.moving, seen);
    if (all.radius() < muchLarger * subject.radius())
        return withGround(all, seen);
    osg::Vec3 const reach = osg::Vec3(subject.radius(), subject.radius(), 0) * surroundings;
    osg::BoundingBox wide(subject.center() - reach, subject.center() + reach);
    wide.expandBy(subject);
    return wide.intersect(all);
}

} // namespace

void FirstView::operator()(osg::Node* node, osg::NodeVisitor* visitor) {
    traverse(node, visitor);
    if (!m_show)
        return;
    Surveyor seen;
    m_graph.boundBy(seen);
    osg::BoundingBox const box = framed(seen);
    if (box.valid() && box.radius() > 0) {
        m_show(box);
        finish();
    }
}

double distanceToSee(osg::BoundingBox const& box, osg::Vec3d const& backward, double slopeWide, double slopeHigh) {
    osg::Vec3d right = osg::Vec3d(0, 0, 1) ^ backward;
    if (right.normalize() == 0)
        right.set(1, 0, 0);
    osg::Vec3d const up = backward ^ right;
    double distance = 0;
    for (unsigned int i = 0; i < 8; ++i) {
        osg::Vec3d const corner = box.corner(i) - box.center();
        double const reach = std::max(std::abs(corner * right) / slopeWide, std::abs(corner * up) / slopeHigh);
        distance = std::max(distance, corner * backward + reach);
    }
    return distance;
}

} // namespace hyxOSG
