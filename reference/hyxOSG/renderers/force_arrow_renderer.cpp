// Reads forces once a frame, and shows them as arrows.
#include "platform/hyxOSG/renderers/force_arrow_renderer.h"

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyx/joints/constraint1dof.h"
#include "platform/hyxSDK/simulation.h"
#include "platform/osg/attachment.h"
#include "reference/hyx/values/number_checks.h"
#include "reference/hyxOSG/renderers/arrow_mesh.h"
#include "reference/machinery/shading/shading_marks.h"
#include "reference/machinery/viewing/simulation_scene.h"

#include <osg/Group>
#include <osg/observer_ptr>

#include <cmath>
#include <map>
#include <stdexcept>

namespace hyxOSG {
namespace {

osg::Vec3d toScene(hyx::Vec3 const& v) {
    return {v.x, v.y, v.z};
}

osg::Vec4f toScene(hyxRender::Color const& color) {
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
hyx::Vec3 carryingForce(hyx::RigidBody const& body, hyx::Vec3 const& velocityBefore, hyx::Vec3 const& gravity,
                        double timeStep) {
    if (body.getMotionControl() == hyx::RigidBody::STATIC || timeStep <= 0)
        return {};
    return ((body.getVelocity() - velocityBefore) / timeStep - gravity) * body.getMass();
}

double axialForce(hyx::Constraint1DOF const& constraint, int statistics) {
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

struct ForceArrowRenderer::Implementation {
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

void ForceArrowRenderer::Implementation::attach(hyxSDK::Simulation const* simulation) {
    if (node->getNumParents() > 0)
        return;
    root = findSimulationScene(simulation);
    if (root.valid())
        osg::attach(*root, *node);
}

void ForceArrowRenderer::Implementation::detach() {
    if (root.valid())
        root->removeChild(node);
    root = nullptr;
}

void ForceArrowRenderer::Implementation::follow(hyxSDK::Simulation const& simulation, double timeStep) {
    for (auto& [body, arrow] : bodies) {
        auto const force = carryingForce(*body, arrow.velocity, simulation.getGravity(), timeStep);
        arrow.velocity = body->getVelocity();
        arrow.follow(body->getTransform().transformPoint(arrow.attachment), force, smoothFactor);
    }
    for (auto& [constraint, arrow] : constraints) {
        auto const frame = constraint->getAttachmentTransform(0);
        auto const axis = frame.transformVector(hyx::Vec3(0, 0, 1));
        arrow.follow(frame.transformPoint(arrow.attachment), axis * axialForce(*constraint, arrow.statistics),
                     smoothFactor);
    }
}

void ForceArrowRenderer::Implementation::draw() {
    ArrowMesh::Style const style{static_cast<float>(coneHeight), static_cast<float>(arrowRadius)};
    mesh.begin();
    for (auto const& [body, arrow] : bodies)
        mesh.add(toScene(arrow.tail), toScene(arrow.force * scale), arrow.color, style);
    for (auto const& [constraint, arrow] : constraints)
        mesh.add(toScene(arrow.tail), toScene(arrow.force * scale), arrow.color, style);
    mesh.end();
}

ForceArrowRenderer::ForceArrowRenderer() : m_implementation(std::make_unique<Implementation>()) {
    m_implementation->node->setName("ForceArrowRenderer");
    m_implementation->node->setNodeMask(~decorator::shadowMasks);
    m_implementation->node->addChild(m_implementation->mesh.node());
}

ForceArrowRenderer::~ForceArrowRenderer() {
    m_implementation->detach();
}

bool ForceArrowRenderer::add(hyx::RigidBody* body, hyx::Vec3 const& attachment, hyxRender::Color const& color) {
    if (!body || m_implementation->bodies.contains(body))
        return false;
    m_implementation->bodies[body] = {{attachment, toScene(color), {}, {}}, body, body->getVelocity()};
    return true;
}

bool ForceArrowRenderer::add(hyx::Constraint1DOF* constraint, hyx::Vec3 const& attachment,
                             hyxRender::Color const& color, int statistics) {
    hyx::requireArgument((statistics & ~ALL) == 0, "the force statistics are a sum of MOTOR1D, RANGE1D and LOCK1D");
    if (!constraint || m_implementation->constraints.contains(constraint))
        return false;
    m_implementation->constraints[constraint] = {{attachment, toScene(color), {}, {}}, constraint, statistics};
    return true;
}

void ForceArrowRenderer::remove(hyx::RigidBody* body) {
    m_implementation->bodies.erase(body);
    m_implementation->draw();
}

void ForceArrowRenderer::remove(hyx::Constraint1DOF* constraint) {
    m_implementation->constraints.erase(constraint);
    m_implementation->draw();
}

void ForceArrowRenderer::setColor(hyx::RigidBody* body, hyxRender::Color const& color) {
    if (auto const found = m_implementation->bodies.find(body); found != m_implementation->bodies.end())
        found->second.color = toScene(color);
    m_implementation->draw();
}

void ForceArrowRenderer::setColor(hyx::Constraint1DOF* constraint, hyxRender::Color const& color) {
    if (auto const found = m_implementation->constraints.find(constraint); found != m_implementation->constraints.end())
        found->second.color = toScene(color);
    m_implementation->draw();
}

void ForceArrowRenderer::setSmoothFactor(hyx::Real smoothFactor) {
    hyx::requireArgument(smoothFactor >= 0 && smoothFactor < 1, "the smooth factor must be 0 or more and below 1");
    m_implementation->smoothFactor = smoothFactor;
}

hyx::Real ForceArrowRenderer::getSmoothFactor() const {
    return m_implementation->smoothFactor;
}

void ForceArrowRenderer::setConeHeight(hyx::Real coneHeight) {
    hyx::requireArgument(coneHeight >= 0 && std::isfinite(coneHeight),
                         "the height of the arrow tips must be 0 or more metres");
    m_implementation->coneHeight = coneHeight;
    m_implementation->draw();
}

hyx::Real ForceArrowRenderer::getConeHeight() const {
    return m_implementation->coneHeight;
}

void ForceArrowRenderer::setArrowRadius(hyx::Real arrowRadius) {
    hyx::requireArgument(arrowRadius > 0 && std::isfinite(arrowRadius),
                         "the radius of the arrows must be positive and finite");
    m_implementation->arrowRadius = arrowRadius;
    m_implementation->draw();
}

hyx::Real ForceArrowRenderer::getArrowRadius() const {
    return m_implementation->arrowRadius;
}

void ForceArrowRenderer::setScale(hyx::Real scale) {
    hyx::requireArgument(std::isfinite(scale), "the scale of the arrows must be finite");
    m_implementation->scale = scale;
    m_implementation->draw();
}

hyx::Real ForceArrowRenderer::getScale() const {
    return m_implementation->scale;
}

osg::Group* ForceArrowRenderer::getNode() const {
    return m_implementation->node.get();
}

void ForceArrowRenderer::addNotification() {
    if (!getSimulation())
        throw std::logic_error("the arrows are in no simulation: add them to one");
    m_implementation->time = getSimulation()->getTimeStamp();
    m_implementation->attach(getSimulation());
}

void ForceArrowRenderer::removeNotification() {
    m_implementation->detach();
}

void ForceArrowRenderer::last(hyx::TimeStamp time) {
    if (!getSimulation())
        return;
    m_implementation->attach(getSimulation());
    m_implementation->follow(*getSimulation(), time - m_implementation->time);
    m_implementation->time = time;
    m_implementation->draw();
}

} // namespace hyxOSG
