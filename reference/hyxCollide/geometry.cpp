// The operations of geometries, and their rebuilding when shape or body changes.
#include "platform/hyx/bodies/rigid_body.h"
#include "reference/hyx/values/number_checks.h"
#include "reference/machinery/bullet/bullet_values.h"
#include "reference/machinery/bullet/geometry_implementation.h"
#include "reference/machinery/bullet/physics_world.h"
#include "reference/machinery/bullet/rigid_body_implementation.h"

#include <stdexcept>

namespace hyxCollide {

namespace {

Shape* requireShape(Shape* shape) {
    if (!shape)
        throw std::invalid_argument("a geometry needs a shape");
    return shape;
}

} // namespace

Geometry::Implementation::Implementation(Geometry& owner, Shape* shape) : owner(owner), shape(requireShape(shape)) {
    shape->implementation().users.push_back(&owner);
    carrier.geometries.push_back(&owner);
    object.setUserPointer(&carrier);
    object.setCollisionFlags(object.getCollisionFlags() | btCollisionObject::CF_STATIC_OBJECT |
                             btCollisionObject::CF_CUSTOM_MATERIAL_CALLBACK);
}

Geometry::Implementation::~Implementation() {
    std::erase(shape->implementation().users, &owner);
    for (Geometry const* stranger : strangers)
        stranger->implementation().strangers.erase(&owner);
}

btCollisionShape* Geometry::Implementation::bulletShape(bool moving) {
    if (!bullet.shape || builtForMoving != moving) {
        bullet = buildBulletShape(*shape, moving);
        builtForMoving = moving;
        markBulletShape(bullet, &owner);
    }
    return bullet.shape.get();
}

void Geometry::Implementation::rebuild() {
    BulletShape const former = std::move(bullet);
    bullet = {};
    refresh();
}

void Geometry::Implementation::refresh() {
    if (body)
        body->implementation().geometriesChanged();
    else if (carrier.world)
        carrier.world->refresh(owner);
}

void Geometry::Implementation::shapeChanged() {
    hyx::PhysicsWorld* world = body ? body->implementation().carrier.world : carrier.world;
    if (world)
        world->wakeAround(owner);
    shapeChangeEvent.trigger(&owner);
}

bool Geometry::Implementation::mayCollide(Geometry const* first, Geometry const* second) {
    if (!first || !second)
        return true;
    Implementation const& one = first->implementation();
    return one.enabled && second->implementation().enabled && !(one.strangers.size() && one.strangers.contains(second));
}

Geometry::Geometry(Shape* shape, hyx::Name const& name)
    : hyx::Object(name), m_implementation(std::make_unique<Implementation>(*this, shape)) {}

Geometry::~Geometry() {
    // Callbacks that hold a reference for a while must not end this a second time.
    reference();
    m_implementation->removeEvent.trigger(this);
}

Shape* Geometry::getShape() const {
    return m_implementation->shape.get();
}

void Geometry::setShape(Shape* shape) {
    requireShape(shape);
    // Kept until nothing built from it is in use any more.
    hyx::ref_ptr<Shape> const former = m_implementation->shape;
    std::erase(former->implementation().users, this);
    shape->implementation().users.push_back(this);
    m_implementation->shape = shape;
    m_implementation->rebuild();
    m_implementation->shapeChanged();
}

void Geometry::setLocalTransform(hyx::AffineMatrix4x4 const& local) {
    hyx::requireFinite(local, "the place of a geometry");
    m_implementation->local = hyx::AffineMatrix4x4(local.getRotate(), local.getTranslate());
    m_implementation->refresh();
}

hyx::AffineMatrix4x4 const& Geometry::getLocalTransform() const {
    return m_implementation->local;
}

void Geometry::setLocalPosition(hyx::Vec3 const& position) {
    setLocalTransform(hyx::AffineMatrix4x4(getLocalRotation(), position));
}

void Geometry::setLocalRotation(hyx::Quat const& rotation) {
    setLocalTransform(
        hyx::AffineMatrix4x4(hyx::requireRotation(rotation, "the rotation of a geometry"), getLocalPosition()));
}

hyx::AffineMatrix4x4 Geometry::getTransform() const {
    return m_implementation->body ? m_implementation->local * m_implementation->body->getTransform()
                                  : m_implementation->local;
}

hyx::RigidBody* Geometry::getRigidBody() const {
    return m_implementation->body;
}

hyxSDK::Simulation* Geometry::getSimulation() const {
    return m_implementation->body ? m_implementation->body->getSimulation() : m_implementation->simulation;
}

void Geometry::setMaterial(hyx::Material* material) {
    m_implementation->material = material;
    m_implementation->refresh();
}

hyx::Material* Geometry::getMaterial() const {
    return m_implementation->material.get();
}

void Geometry::setEnableCollisions(bool enable) {
    m_implementation->enabled = enable;
    m_implementation->refresh();
}

bool Geometry::getEnableCollisions() const {
    return m_implementation->enabled;
}

void Geometry::setEnableCollisions(Geometry* other, bool enable) {
    if (!other || other == this)
        return;
    if (enable) {
        m_implementation->strangers.erase(other);
        other->implementation().strangers.erase(this);
    } else {
        m_implementation->strangers.insert(other);
        other->implementation().strangers.insert(this);
    }
    m_implementation->refresh();
}

bool Geometry::getEnableCollisions(Geometry const* other) const {
    return other && !m_implementation->strangers.contains(other);
}

void Geometry::setSensor(bool sensor) {
    m_implementation->sensor = sensor;
}

bool Geometry::isSensor() const {
    return m_implementation->sensor;
}

void Geometry::getBound(hyx::Vec3& lower, hyx::Vec3& upper) const {
    btVector3 low;
    btVector3 high;
    bool const moving =
        m_implementation->body && m_implementation->body->getMotionControl() == hyx::RigidBody::DYNAMICS;
    m_implementation->bulletShape(moving)->getAabb(hyx::toBullet(getTransform()), low, high);
    lower = hyx::fromBullet(low);
    upper = hyx::fromBullet(high);
}

Geometry::ShapeChangeEvent& Geometry::getShapeChangeEvent() const {
    return m_implementation->shapeChangeEvent;
}

Geometry::RemoveEvent& Geometry::getRemoveEvent() const {
    return m_implementation->removeEvent;
}

} // namespace hyxCollide
