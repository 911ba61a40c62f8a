#include "platform/hyxOSG/renderers/force_arrow_renderer.h"

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyx/joints/constraint1dof.h"
#include "platform/hyxSDK/simulation.h"
#include "reference/hyx/values/number_checks.h"
#include "reference/hyxOSG/renderers/arrow_mesh.h"
#include "reference/hyxOSG/renderers/simulation_scene.h"
#include "reference/machinery/shading/shading_marks.h"

#include <osg/Group>
#include <osg/observer_ptr>

#include <cmath>
#include <map>
#include <stdexcept>

namespace hyxOSG {
namespace {

osg::Vec3d to_scene(hyx::Vec3 const& v) {
    return {v.x, v.y, v.z};
}

osg::Vec4f to_scene(hyxRender::Color const& color) {
    return {color.r, color.g, color.b, color.a};
}

struct Arrow {
    hyx::Vec3 attachment;
    osg::Vec4f color;
    hyx::Vec3 tail;
    hyx::Vec3 force; // smoothed

    void follow(hyx::Vec3 const& nextTail, hyx::Vec3 const& nextForce, double keep) {
        tail = nextTail;
        force = force * keep + nextForce * (1 - keep);
    }
};

struct BodyArrow : Arrow {
    hyx::ref_ptr<hyx::RigidBody> body;
    hyx::Vec3 velocity; // at the end of the last step
};

struct ConstraintArrow : Arrow {
    hyx::ref_ptr<hyx::Constraint1DOF> constraint;
    int statistics;
};

// Everything but the weight, from the change of motion.
hyx::Vec3 carrying_force(hyx::RigidBody const& body, hyx::Vec3 const& velocityBefore, hyx::Vec3 const& gravity,
                         double timeStep) {
    if (body.getMotionControl() == hyx::RigidBody::STATIC || timeStep <= 0)
        return {};
    return ((body.getVelocity() - velocityBefore) / timeStep - gravity) * body.getMass();
}

double axial_force(hyx::Constraint1DOF const& constraint, int statistics) {
    double force = 0;
    if (statistics & ForceArrowRenderer::MOTOR1D)
        force += constraint.getMotor1D()->getCurrentForce();
    if (statistics & ForceArrowRenderer::RANGE1D)
        force += constraint.getRange1D()->getCurrentForce();
    if (statistics & ForceArrowRenderer::LOCK1D)
        force += constraint.getLock1D()->getCurrentForce();
    return force;
}

} // namespace

struct ForceArrowRenderer::Impl {
    std::map<hyx::RigidBody*, BodyArrow> bodies;
    std::map<hyx::Constraint1DOF*, ConstraintArrow> constraints;
    osg::ref_ptr<osg::Group> node = new osg::Group;
    osg::observer_ptr<osg::Group> root; // where addNotification or last put the node
    ArrowMesh mesh;
    double smoothFactor = 0;
    double coneHeight = 0.2;
    double arrowRadius = 0.04;
    double scale = 0.01;
    hyx::TimeStamp time = 0; // of the last step that was shown

    void attach(hyxSDK::Simulation const* simulation);
    void detach();
    void follow(hyxSDK::Simulation const& simulation, double timeStep);
    void draw();
};

void ForceArrowRenderer::Impl::attach(hyxSDK::Simulation const* simulation) {
    if (node->getNumParents() > 0)
        return;
    root = find_simulation_scene(simulation);
    if (root.valid())
        root->addChild(node);
}

void ForceArrowRenderer::Impl::detach() {
    if (root.valid())
        root->removeChild(node);
    root = nullptr;
}

void ForceArrowRenderer::Impl::follow(hyxSDK::Simulation const& simulation, double timeStep) {
    for (auto& [body, arrow] : bodies) {
        auto const force = carrying_force(*body, arrow.velocity, simulation.getGravity(), timeStep);
        arrow.velocity = body->getVelocity();
        arrow.follow(body->getTransform().transformPoint(arrow.attachment), force, smoothFactor);
    }
    for (auto& [constraint, arrow] : constraints) {
        auto const frame = constraint->getAttachmentTransform(0);
        auto const axis = frame.transformVector(hyx::Vec3(0, 0, 1));
        arrow.follow(frame.transformPoint(arrow.attachment), axis * axial_force(*constraint, arrow.statistics),
                     smoothFactor);
    }
}

void ForceArrowRenderer::Impl::draw() {
    ArrowMesh::Style const style{static_cast<float>(coneHeight), static_cast<float>(arrowRadius)};
    mesh.begin();
    for (auto const& [body, arrow] : bodies)
        mesh.add(to_scene(arrow.tail), to_scene(arrow.force * scale), arrow.color, style);
    for (auto const& [constraint, arrow] : constraints)
        mesh.add(to_scene(arrow.tail), to_scene(arrow.force * scale), arrow.color, style);
    mesh.end();
}

ForceArrowRenderer::ForceArrowRenderer() : m_impl(std::make_unique<Impl>()) {
    m_impl->node->setName("ForceArrowRenderer");
    m_impl->node->setNodeMask(~(decorator::CASTS_SHADOWS | decorator::RECEIVES_SHADOWS));
    m_impl->node->addChild(m_impl->mesh.node());
}

ForceArrowRenderer::~ForceArrowRenderer() {
    m_impl->detach();
}

bool ForceArrowRenderer::add(hyx::RigidBody* body, hyx::Vec3 const& attachment, hyxRender::Color const& color) {
    if (!body || m_impl->bodies.contains(body))
        return false;
    m_impl->bodies[body] = {{attachment, to_scene(color), {}, {}}, body, body->getVelocity()};
    return true;
}

bool ForceArrowRenderer::add(hyx::Constraint1DOF* constraint, hyx::Vec3 const& attachment,
                             hyxRender::Color const& color, int statistics) {
    hyx::requireArgument((statistics & ~ALL) == 0, "the force statistics are a sum of MOTOR1D, RANGE1D and LOCK1D");
    if (!constraint || m_impl->constraints.contains(constraint))
        return false;
    m_impl->constraints[constraint] = {{attachment, to_scene(color), {}, {}}, constraint, statistics};
    return true;
}

void ForceArrowRenderer::remove(hyx::RigidBody* body) {
    m_impl->bodies.erase(body);
    m_impl->draw();
}

void ForceArrowRenderer::remove(hyx::Constraint1DOF* constraint) {
    m_impl->constraints.erase(constraint);
    m_impl->draw();
}

void ForceArrowRenderer::setColor(hyx::RigidBody* body, hyxRender::Color const& color) {
    if (auto const found = m_impl->bodies.find(body); found != m_impl->bodies.end())
        found->second.color = to_scene(color);
    m_impl->draw();
}

void ForceArrowRenderer::setColor(hyx::Constraint1DOF* constraint, hyxRender::Color const& color) {
    if (auto const found = m_impl->constraints.find(constraint); found != m_impl->constraints.end())
        found->second.color = to_scene(color);
    m_impl->draw();
}

void ForceArrowRenderer::setSmoothFactor(hyx::Real smoothFactor) {
    hyx::requireArgument(smoothFactor >= 0 && smoothFactor < 1, "the smooth factor must be 0 or more and below 1");
    m_impl->smoothFactor = smoothFactor;
}

hyx::Real ForceArrowRenderer::getSmoothFactor() const {
    return m_impl->smoothFactor;
}

void ForceArrowRenderer::setConeHeight(hyx::Real coneHeight) {
    hyx::requireArgument(coneHeight >= 0 && std::isfinite(coneHeight),
                         "the height of the arrow tips must be 0 or more metres");
    m_impl->coneHeight = coneHeight;
    m_impl->draw();
}

hyx::Real ForceArrowRenderer::getConeHeight() const {
    return m_impl->coneHeight;
}

void ForceArrowRenderer::setArrowRadius(hyx::Real arrowRadius) {
    hyx::requireArgument(arrowRadius > 0 && std::isfinite(arrowRadius),
                         "the radius of the arrows must be positive and finite");
    m_impl->arrowRadius = arrowRadius;
    m_impl->draw();
}

hyx::Real ForceArrowRenderer::getArrowRadius() const {
    return m_impl->arrowRadius;
}

void ForceArrowRenderer::setScale(hyx::Real scale) {
    hyx::requireArgument(std::isfinite(scale), "the scale of the arrows must be finite");
    m_impl->scale = scale;
    m_impl->draw();
}

hyx::Real ForceArrowRenderer::getScale() const {
    return m_impl->scale;
}

osg::Group* ForceArrowRenderer::getNode() const {
    return m_impl->node.get();
}

void ForceArrowRenderer::addNotification() {
    m_impl->time = getSimulation()->getTimeStamp();
    m_impl->attach(getSimulation());
}

void ForceArrowRenderer::removeNotification() {
    m_impl->detach();
}

void ForceArrowRenderer::last(hyx::TimeStamp time) {
    if (!getSimulation())
        return;
    m_impl->attach(getSimulation());
    m_impl->follow(*getSimulation(), time - m_impl->time);
    m_impl->time = time;
    m_impl->draw();
}

} // namespace hyxOSG
