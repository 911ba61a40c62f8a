// Adds and removes the members of a group, together and one by one.
#include "platform/hyxSDK/assembly.h"

#include "platform/hyxSDK/simulation.h"
#include "reference/hyxSDK/named.h"

#include <algorithm>
#include <stdexcept>

namespace hyxSDK {

namespace {

/// Adds what is new to a list, and to the simulation of the list's assembly when there is one.
template <class T>
bool takeIn(hyx::Vector<hyx::ref_ptr<T>>& list, T* object, Simulation* simulation) {
    if (!object || std::find(list.begin(), list.end(), object) != list.end())
        return false;
    if (simulation)
        simulation->add(object);
    list.push_back(object);
    return true;
}

template <class T>
bool letGo(hyx::Vector<hyx::ref_ptr<T>>& list, T* object, Simulation* simulation) {
    auto const place = std::find(list.begin(), list.end(), object);
    if (!object || place == list.end())
        return false;
    hyx::ref_ptr<T> const kept = *place;
    list.erase(place);
    if (simulation)
        simulation->remove(object);
    return true;
}

} // namespace

Assembly::Assembly(hyx::Name const& name) : Component(name) {}

Assembly::~Assembly() = default;

void Assembly::add(hyx::RigidBody* body) {
    if (takeIn(m_bodies, body, m_simulation))
        addObject(body, false);
}

void Assembly::add(hyxCollide::Geometry* geometry) {
    if (takeIn(m_geometries, geometry, m_simulation))
        addObject(geometry, false);
}

void Assembly::add(hyx::Constraint* constraint) {
    if (takeIn(m_constraints, constraint, m_simulation))
        addObject(constraint, false);
}

void Assembly::add(hyx::Process* process) {
    if (takeIn(m_processes, process, m_simulation))
        addObject(process, false);
}

void Assembly::add(hyx::Frame* frame) {
    if (takeIn(m_frames, frame, m_simulation))
        addObject(frame, false);
}

void Assembly::add(EventListener* listener) {
    if (takeIn(m_listeners, listener, m_simulation))
        addObject(listener, false);
}

void Assembly::add(Assembly* assembly) {
    if (!assembly || std::find(m_assemblies.begin(), m_assemblies.end(), assembly) != m_assemblies.end())
        return;
    if (assembly == this || assembly->contains(this))
        throw std::invalid_argument("an assembly cannot contain itself");
    if (assembly->m_simulation)
        throw std::invalid_argument("the assembly is in a simulation already; remove it there first");
    addObject(assembly, false);
    m_assemblies.push_back(assembly);
    if (m_simulation)
        assembly->enter(m_simulation);
}

bool Assembly::remove(hyx::RigidBody* body) {
    removeObject(body);
    return letGo(m_bodies, body, m_simulation);
}

bool Assembly::remove(hyxCollide::Geometry* geometry) {
    removeObject(geometry);
    return letGo(m_geometries, geometry, m_simulation);
}

bool Assembly::remove(hyx::Constraint* constraint) {
    removeObject(constraint);
    return letGo(m_constraints, constraint, m_simulation);
}

bool Assembly::remove(hyx::Process* process) {
    removeObject(process);
    return letGo(m_processes, process, m_simulation);
}

bool Assembly::remove(hyx::Frame* frame) {
    removeObject(frame);
    return letGo(m_frames, frame, m_simulation);
}

bool Assembly::remove(EventListener* listener) {
    removeObject(listener);
    return letGo(m_listeners, listener, m_simulation);
}

bool Assembly::remove(Assembly* assembly) {
    auto const place = std::find(m_assemblies.begin(), m_assemblies.end(), assembly);
    if (!assembly || place == m_assemblies.end())
        return false;
    hyx::ref_ptr<Assembly> const kept = assembly;
    m_assemblies.erase(place);
    removeObject(assembly);
    if (m_simulation)
        assembly->leave();
    return true;
}

hyx::RigidBody* Assembly::getRigidBody(hyx::Name const& name) const {
    if (hyx::RigidBody* body = findNamed(m_bodies, name))
        return body;
    for (auto const& assembly : m_assemblies)
        if (hyx::RigidBody* body = assembly->getRigidBody(name))
            return body;
    return nullptr;
}

hyx::Constraint* Assembly::getConstraint(hyx::Name const& name) const {
    if (hyx::Constraint* constraint = findNamed(m_constraints, name))
        return constraint;
    for (auto const& assembly : m_assemblies)
        if (hyx::Constraint* constraint = assembly->getConstraint(name))
            return constraint;
    return nullptr;
}

Assembly* Assembly::getAssembly(hyx::Name const& name) const {
    if (Assembly* assembly = findNamed(m_assemblies, name))
        return assembly;
    for (auto const& assembly : m_assemblies)
        if (Assembly* inner = assembly->getAssembly(name))
            return inner;
    return nullptr;
}

void Assembly::transform(hyx::AffineMatrix4x4 const& motion) {
    hyx::AffineMatrix4x4 const turn(motion.getRotate());
    for (auto const& body : m_bodies) {
        body->setTransform(body->getTransform() * motion);
        body->setVelocity(turn.transformVector(body->getVelocity()));
        body->setAngularVelocity(turn.transformVector(body->getAngularVelocity()));
    }
    for (auto const& geometry : m_geometries)
        geometry->setLocalTransform(geometry->getLocalTransform() * motion);
    for (auto const& assembly : m_assemblies)
        assembly->transform(motion);
}

bool Assembly::contains(Assembly const* assembly) const {
    return std::any_of(m_assemblies.begin(), m_assemblies.end(),
                       [assembly](auto const& inner) { return inner.get() == assembly || inner->contains(assembly); });
}

void Assembly::enter(Simulation* simulation) {
    m_simulation = simulation;
    auto const addAll = [simulation](auto const& list) {
        for (auto const& object : list)
            simulation->add(object.get());
    };
    addAll(m_bodies);
    addAll(m_geometries);
    addAll(m_constraints);
    addAll(m_processes);
    addAll(m_frames);
    addAll(m_listeners);
    for (auto const& assembly : m_assemblies)
        assembly->enter(simulation);
}

void Assembly::leave() {
    for (auto const& assembly : m_assemblies)
        assembly->leave();
    auto const removeAll = [this](auto const& list) {
        for (auto const& object : list)
            m_simulation->remove(object.get());
    };
    removeAll(m_listeners);
    removeAll(m_frames);
    removeAll(m_processes);
    removeAll(m_constraints);
    removeAll(m_geometries);
    removeAll(m_bodies);
    m_simulation = nullptr;
}

} // namespace hyxSDK
