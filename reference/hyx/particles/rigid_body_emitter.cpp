// Makes bodies after a template at a rate.
#include "platform/hyx/particles/rigid_body_emitter.h"

#include "platform/hyxCollide/box.h"
#include "platform/hyxCollide/geometry.h"
#include "platform/hyxCollide/sphere.h"
#include "platform/hyxSDK/simulation.h"

namespace hyx {

RigidBodyEmitter::RigidBodyEmitter() {
    setSphereTemplate(0.1);
}

void RigidBodyEmitter::setSphereTemplate(Real radius) {
    ref_ptr<hyxCollide::Sphere> const shape = new hyxCollide::Sphere(radius);
    m_make = [shape] { return new RigidBody(new hyxCollide::Geometry(shape.get())); };
}

void RigidBodyEmitter::setBoxTemplate(Vec3 const& halfExtents) {
    ref_ptr<hyxCollide::Box> const shape = new hyxCollide::Box(halfExtents);
    m_make = [shape] { return new RigidBody(new hyxCollide::Geometry(shape.get())); };
}

void RigidBodyEmitter::setTemplate(Template make) {
    m_make = std::move(make);
}

void RigidBodyEmitter::addEmitCallback(EmitCallback callback) {
    m_callbacks.push_back(std::move(callback));
}

std::vector<ref_ptr<RigidBody>> const& RigidBodyEmitter::getBodies() const {
    return m_bodies;
}

bool RigidBodyEmitter::emit(Vec3 const& position, Vec3 const& velocity) {
    if (!getSimulation() || !m_make)
        return false;
    ref_ptr<RigidBody> const body = m_make();
    if (!body)
        return false;
    body->setPosition(position);
    body->setVelocity(velocity);
    getSimulation()->add(body.get());
    m_bodies.push_back(body);
    for (EmitCallback const& callback : m_callbacks)
        callback(body.get());
    return true;
}

UInt RigidBodyEmitter::mostAtOnce() const {
    return 1000;
}

} // namespace hyx
