// Lets the physics library draw its world, and adds what it does not know of.
#include "reference/hyxOSG/application/debug_lines.h"

#include "platform/hyx/bodies/frame.h"
#include "platform/hyx/joints/constraint.h"
#include "platform/hyxSDK/simulation.h"
#include "reference/machinery/bullet/bullet_values.h"
#include "reference/machinery/bullet/geometry_implementation.h"

#include <BulletCollision/CollisionDispatch/btCollisionWorld.h>

namespace hyxOSG {
namespace {

constexpr btScalar contactLength = 0.2; // metres
constexpr btScalar frameLength = 0.3;
btVector3 const contactColor(1, 1, 0);
btVector3 const forceColor(1, 0.3, 0.1);
btVector3 const bodyColor(0.2, 0.9, 0.3);

/// Of bodies that move by forces; 0 where there are none.
double averageRadiusByWeight(hyxSDK::Simulation const& simulation) {
    double radii = 0, masses = 0;
    for (auto const& body : simulation.getRigidBodies()) {
        if (body->getMotionControl() != hyx::RigidBody::DYNAMICS)
            continue;
        for (auto const& geometry : body->getGeometries())
            if (btCollisionShape const* shape =
                    geometry->implementation().bulletShape(geometry->implementation().builtForMoving)) {
                btVector3 center;
                btScalar radius = 0;
                shape->getBoundingSphere(center, radius);
                radii += radius;
            }
        masses += body->getMass();
    }
    return masses > 0 ? radii / (masses * hyxSDK::Simulation::standardGravity) : 0;
}

} // namespace

void DebugLines::drawInside(hyxSDK::Simulation& simulation) {
    m_points.clear();
    m_colors.clear();
    drawForces(simulation);
    drawContacts(simulation);
    drawConstraints(simulation);
    for (auto const& frame : simulation.getFrames())
        drawTransform(hyx::toBullet(frame->getMatrix()), frameLength);
}

void DebugLines::drawShapes(hyxSDK::Simulation const& simulation) {
    m_points.clear();
    m_colors.clear();
    btCollisionWorld drawer(nullptr, nullptr, nullptr); // empty: only its drawing of shapes is used
    drawer.setDebugDrawer(this);
    for (auto const& geometry : simulation.getSpace()->getGeometries()) {
        auto& implementation = geometry->implementation();
        btCollisionShape const* shape = implementation.bulletShape(implementation.builtForMoving);
        if (shape)
            drawer.debugDrawObject(hyx::toBullet(geometry->getTransform()), shape, bodyColor);
    }
}

void DebugLines::drawLine(btVector3 const& from, btVector3 const& to, btVector3 const& color) {
    osg::Vec4 const value(color.x(), color.y(), color.z(), 1);
    m_points.push_back(osg::Vec3(from.x(), from.y(), from.z()));
    m_points.push_back(osg::Vec3(to.x(), to.y(), to.z()));
    m_colors.push_back(value);
    m_colors.push_back(value);
}

void DebugLines::drawContactPoint(btVector3 const& point, btVector3 const& normal, btScalar, int,
                                  btVector3 const& color) {
    drawLine(point, point + normal * contactLength, color);
}

void DebugLines::drawForces(hyxSDK::Simulation const& simulation) {
    double const metersPerNewton = averageRadiusByWeight(simulation);
    auto const drawForce = [&](hyx::Vec3 const& point, hyx::Vec3 const& force) {
        drawLine(hyx::toBullet(point), hyx::toBullet(point + force * metersPerNewton), forceColor);
    };
    for (auto const& contact : simulation.getSpace()->getGeometryContacts())
        for (auto const& point : contact.points())
            drawForce(point.point, point.getForce());
    for (auto const& constraint : simulation.getConstraints()) {
        hyx::Vec3 force, torque;
        if (constraint->getLastForce(1, force, torque))
            drawForce(constraint->getAttachmentTransform(1).getTranslate(), force);
    }
}

void DebugLines::drawContacts(hyxSDK::Simulation const& simulation) {
    for (auto const& contact : simulation.getSpace()->getGeometryContacts())
        for (auto const& point : contact.points()) {
            drawContactPoint(hyx::toBullet(point.point), hyx::toBullet(point.normal), point.depth, 0, contactColor);
        }
}

void DebugLines::drawConstraints(hyxSDK::Simulation const& simulation) {
    for (auto const& constraint : simulation.getConstraints()) {
        for (hyx::UInt side = 0; side < 2; ++side)
            drawTransform(hyx::toBullet(constraint->getAttachmentTransform(side)), frameLength);
    }
}

} // namespace hyxOSG
