// The operations of bodies, handed to what stands for them in Bullet.
#include "platform/hyx/bodies/rigid_body.h"

#include "reference/hyx/values/number_checks.h"
#include "reference/hyxSDK/simulation_implementation.h"
#include "reference/machinery/bullet/bullet_values.h"
#include "reference/machinery/bullet/geometry_implementation.h"
#include "reference/machinery/bullet/rigid_body_implementation.h"

#include <algorithm>
#include <stdexcept>

namespace hyx {

using hyxCollide::Geometry;

RigidBody::RigidBody(Name const& name) : Object(name), m_implementation(std::make_unique<Implementation>(*this)) {}

RigidBody::RigidBody(Geometry* geometry, Name const& name) : RigidBody(name) {
    add(geometry);
}

RigidBody::~RigidBody() {
    // Callbacks that hold a reference for a while must not end this a second time.
    reference();
    for (auto const& geometry : m_implementation->geometries)
        geometry->getRemoveEvent().trigger(geometry.get());
    m_implementation->removeEvent.trigger(this);
    m_implementation->frame->bodyEnds();
}

void RigidBody::add(Geometry* geometry) {
    if (!geometry || geometry->getRigidBody() == this)
        return;
    if (geometry->getRigidBody() || geometry->getSimulation())
        throw std::invalid_argument("the geometry belongs to another body or simulation; remove it there first");
    geometry->implementation().body = this;
    m_implementation->geometries.push_back(geometry);
    m_implementation->geometriesChanged();
    if (hyxSDK::Simulation* simulation = getSimulation()) {
        simulation->implementation().changeStructure();
        simulation->getGeometryAddedEvent().trigger(geometry);
    }
}

void RigidBody::add(Geometry* geometry, AffineMatrix4x4 const& local) {
    if (!geometry)
        return;
    if (!geometry->getRigidBody() && !geometry->getSimulation())
        geometry->setLocalTransform(local);
    add(geometry);
}

bool RigidBody::remove(Geometry* geometry) {
    auto& geometries = m_implementation->geometries;
    auto const place = std::find(geometries.begin(), geometries.end(), geometry);
    if (!geometry || place == geometries.end())
        return false;
    ref_ptr<Geometry> const kept = *place;
    geometries.erase(place);
    kept->implementation().body = nullptr;
    m_implementation->geometriesChanged();
    if (hyxSDK::Simulation* simulation = getSimulation())
        simulation->implementation().changeStructure();
    kept->getRemoveEvent().trigger(kept.get());
    return true;
}

Vector<ref_ptr<Geometry>> const& RigidBody::getGeometries() const {
    return m_implementation->geometries;
}

void RigidBody::setPosition(Vec3 const& position) {
    btTransform transform = m_implementation->modelTransform();
    transform.setOrigin(toBullet(requireFinite(position, "the position of a body")));
    m_implementation->setModelTransform(transform);
}

Vec3 RigidBody::getPosition() const {
    Implementation const& self = *m_implementation;
    return fromBullet(self.bullet.getWorldTransform() * self.massFrameInverse.getOrigin());
}

void RigidBody::setRotation(Quat const& rotation) {
    btTransform transform = m_implementation->modelTransform();
    transform.setRotation(toBullet(requireRotation(rotation, "the rotation of a body")));
    m_implementation->setModelTransform(transform);
}

Quat RigidBody::getRotation() const {
    return fromBullet(m_implementation->modelTransform().getRotation());
}

void RigidBody::setTransform(AffineMatrix4x4 const& transform) {
    m_implementation->setModelTransform(toBullet(requireFinite(transform, "the place of a body")));
}

AffineMatrix4x4 RigidBody::getTransform() const {
    return fromBullet(m_implementation->modelTransform());
}

Frame* RigidBody::getFrame() const {
    return m_implementation->frame.get();
}

void RigidBody::setVelocity(Vec3 const& velocity) {
    Implementation& self = *m_implementation;
    self.kinematicVelocity = toBullet(requireFinite(velocity, "the velocity of a body"));
    if (self.movesByForces())
        self.bullet.setLinearVelocity(self.kinematicVelocity);
    self.bullet.activate();
}

Vec3 RigidBody::getVelocity() const {
    return fromBullet(m_implementation->velocity());
}

void RigidBody::setAngularVelocity(Vec3 const& angularVelocity) {
    Implementation& self = *m_implementation;
    self.kinematicSpin = toBullet(requireFinite(angularVelocity, "the angular velocity of a body"));
    if (self.movesByForces())
        self.bullet.setAngularVelocity(self.kinematicSpin);
    self.bullet.activate();
}

Vec3 RigidBody::getAngularVelocity() const {
    return fromBullet(m_implementation->spin());
}

Vec3 RigidBody::getPointVelocity(Vec3 const& worldPoint) const {
    return getVelocity() + getAngularVelocity().cross(worldPoint - getWorldCenterOfMass());
}

void RigidBody::setMotionControl(MotionControl control) {
    if (control != DYNAMICS && control != KINEMATICS && control != STATIC)
        throw std::invalid_argument("a body's motion control is DYNAMICS, KINEMATICS or STATIC");
    Implementation& self = *m_implementation;
    if (self.control == control)
        return;
    self.kinematicVelocity = self.velocity();
    self.kinematicSpin = self.spin();
    self.control = control;
    self.rebuildShape();
}

RigidBody::MotionControl RigidBody::getMotionControl() const {
    return m_implementation->control;
}

void RigidBody::setEnable(bool enable) {
    if (m_implementation->enabled == enable)
        return;
    m_implementation->enabled = enable;
    m_implementation->rebuildShape();
}

bool RigidBody::isEnabled() const {
    return m_implementation->enabled;
}

void RigidBody::setMass(Real mass) {
    Implementation& self = *m_implementation;
    requirePositive(mass, "the mass of a body");
    self.inertia *= mass / self.mass;
    self.mass = mass;
    self.massFixed = true;
    self.applyControl();
}

Real RigidBody::getMass() const {
    return m_implementation->mass;
}

void RigidBody::setInertia(Vec3 const& inertia, Vec3 const& products) {
    requireFinite(inertia, "the moments of inertia of a body");
    requireFinite(products, "the products of inertia of a body");
    m_implementation->setInertiaTensor(btMatrix3x3(inertia.x, products.x, products.y, products.x, inertia.y, products.z,
                                                   products.y, products.z, inertia.z));
}

Vec3 RigidBody::getInertia() const {
    btMatrix3x3 const tensor = m_implementation->inertiaTensor();
    return Vec3(tensor[0][0], tensor[1][1], tensor[2][2]);
}

Vec3 RigidBody::getProductsOfInertia() const {
    btMatrix3x3 const tensor = m_implementation->inertiaTensor();
    return Vec3(tensor[0][1], tensor[0][2], tensor[1][2]);
}

void RigidBody::setCenterOfMass(Vec3 const& localPoint) {
    Implementation& self = *m_implementation;
    self.centerFixed = true;
    self.setMassFrame(
        btTransform(self.massFrame.getBasis(), toBullet(requireFinite(localPoint, "the centre of mass of a body"))));
    self.geometriesChanged();
}

Vec3 RigidBody::getCenterOfMass() const {
    return fromBullet(m_implementation->massFrame.getOrigin());
}

Vec3 RigidBody::getWorldCenterOfMass() const {
    return fromBullet(m_implementation->bullet.getWorldTransform().getOrigin());
}

void RigidBody::updateMassProperties() {
    Implementation& self = *m_implementation;
    self.massFixed = self.inertiaFixed = self.centerFixed = false;
    self.geometriesChanged();
}

void RigidBody::addForce(Vec3 const& force) {
    m_implementation->bullet.applyCentralForce(toBullet(requireFinite(force, "a force")));
    m_implementation->bullet.activate();
}

void RigidBody::addForceAtPosition(Vec3 const& force, Vec3 const& worldPoint) {
    addForce(force);
    addTorque((requireFinite(worldPoint, "the point of a force") - getWorldCenterOfMass()).cross(force));
}

void RigidBody::addTorque(Vec3 const& torque) {
    m_implementation->bullet.applyTorque(toBullet(requireFinite(torque, "a torque")));
    m_implementation->bullet.activate();
}

Vec3 RigidBody::getForce() const {
    return fromBullet(m_implementation->bullet.getTotalForce());
}

Vec3 RigidBody::getTorque() const {
    return fromBullet(m_implementation->bullet.getTotalTorque());
}

void RigidBody::setLinearDamping(Real damping) {
    m_implementation->bullet.setDamping(requireShare(damping, "the damping of a body"), getAngularDamping());
}

Real RigidBody::getLinearDamping() const {
    return m_implementation->bullet.getLinearDamping();
}

void RigidBody::setAngularDamping(Real damping) {
    m_implementation->bullet.setDamping(getLinearDamping(), requireShare(damping, "the damping of a body"));
}

Real RigidBody::getAngularDamping() const {
    return m_implementation->bullet.getAngularDamping();
}

Real RigidBody::getKineticEnergy() const {
    Implementation const& self = *m_implementation;
    if (!self.movesByForces())
        return 0;
    btVector3 const spin = self.bullet.getAngularVelocity() * self.bullet.getWorldTransform().getBasis();
    return 0.5 * (self.mass * self.bullet.getLinearVelocity().length2() + (spin * spin).dot(self.inertia));
}

hyxSDK::Simulation* RigidBody::getSimulation() const {
    return m_implementation->simulation;
}

RigidBody::RemoveEvent& RigidBody::getRemoveEvent() {
    return m_implementation->removeEvent;
}

} // namespace hyx
