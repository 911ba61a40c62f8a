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

/// The boxes around what rests and around each thing that moves, and where planes are.
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
        osg::BoundingBox const resting = _bb;
        if (m_moving)
            _bb.init();
        osg::ComputeBoundsVisitor::apply(drawable);
        if (m_moving) {
            moving.push_back(_bb);
            _bb = resting;
        }
    }

    std::vector<osg::BoundingBox> moving;
    std::vector<osg::Plane> planes;

private:
    bool m_moving = false;
};

/// The boxes around what moves and around all, without the few things that have fallen past what rests.
struct Framed {
    explicit Framed(Surveyor& seen) : all(seen.getBoundingBox()) {
        auto const isBelow = [&](osg::BoundingBox const& box) { return all.valid() && box.zMax() < all.zMin(); };
        auto const numBelow = std::count_if(seen.moving.begin(), seen.moving.end(), isBelow);
        bool const fewFell = 2 * std::size_t(numBelow) < seen.moving.size(); // what hangs is below, too
        for (osg::BoundingBox const& box : seen.moving)
            if (!fewFell || !isBelow(box))
                moving.expandBy(box);
        all.expandBy(moving);
    }

    osg::BoundingBox all, moving;
};

/// The height of the ground below `place`: of the highest plane, or of what lies lowest.
std::optional<double> groundBelow(osg::Vec3d const& place, osg::BoundingBox const& all,
                                  std::vector<osg::Plane> const& planes) {
    std::optional<double> ground;
    if (all.zMin() < place.z())
        ground = all.zMin();
    for (osg::Plane const& plane : planes) {
        if (std::abs(plane[2]) < 0.5)
            continue;
        double const height = place.z() - plane.distance(place) / plane[2];
        if (height < place.z() && (!ground || height < *ground))
            ground = height;
    }
    return ground;
}

osg::BoundingBox framed(Surveyor& seen) {
    Framed const boxes(seen);
    auto const withGround = [&](osg::BoundingBox box) {
        auto const ground = groundBelow(box.center(), boxes.all, seen.planes);
        if (ground && *ground < box.zMin() && box.center().z() - *ground < farthestGround * box.radius())
            box.zMin() = static_cast<float>(*ground);
        return box;
    };
    if (!boxes.moving.valid())
        return boxes.all;
    osg::BoundingBox const subject = withGround(boxes.moving);
    if (boxes.all.radius() < muchLarger * subject.radius())
        return withGround(boxes.all);
    osg::Vec3 const reach = osg::Vec3(subject.radius(), subject.radius(), 0) * surroundings;
    osg::BoundingBox wide(subject.center() - reach, subject.center() + reach);
    wide.expandBy(subject);
    return wide.intersect(boxes.all);
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
