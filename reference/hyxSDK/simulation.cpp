// Adds things to a simulation, finds them, and takes them out.
#include "platform/hyxSDK/simulation.h"

#include "reference/hyx/values/number_checks.h"
#include "reference/hyxSDK/named.h"
#include "reference/hyxSDK/simulation_implementation.h"
#include "reference/machinery/bullet/constraint_implementation.h"
#include "reference/machinery/bullet/geometry_implementation.h"
#include "reference/machinery/bullet/rigid_body_implementation.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace hyxSDK {

namespace {

template <class T>
bool contains(hyx::Vector<hyx::ref_ptr<T>> const& list, T const* object) {
    return std::any_of(list.begin(), list.end(), [object](auto const& entry) { return entry.get() == object; });
}

/// Takes the object out of the list and hands it over, so that it lives on while the rest is told.
template <class T>
hyx::ref_ptr<T> takeOut(hyx::Vector<hyx::ref_ptr<T>>& list, T* object) {
    auto const place = std::find(list.begin(), list.end(), object);
    if (!object || place == list.end())
        return nullptr;
    hyx::ref_ptr<T> const kept = *place;
    list.erase(place);
    return kept;
}

/// False for null and for what is here already.
template <class T>
bool mayEnter(T* object, Simulation const* simulation) {
    if (!object || object->getSimulation() == simulation)
        return false;
    if (object->getSimulation())
        throw std::invalid_argument("'" + object->getName() + "' is in another simulation; remove it there first");
    return true;
}

} // namespace

Simulation::Implementation::Implementation(Simulation& owner) : owner(owner) {
    world.setGravity(gravity);
}

std::vector<hyx::RigidBody*> Simulation::Implementation::bodyPointers() const {
    return std::vector<hyx::RigidBody*>(bodies.begin(), bodies.end());
}

void Simulation::Implementation::rebuildGeometries() {
    geometriesOutdated = false;
    geometries = loneGeometries;
    for (auto const& body : bodies)
        geometries.insert(geometries.end(), body->getGeometries().begin(), body->getGeometries().end());
}

Simulation::Simulation(hyx::Name const& name)
    : Object(name), m_implementation(std::make_unique<Implementation>(*this)) {
    m_implementation->space = new hyxCollide::Space(this);
}

Simulation::~Simulation() {
    // Callbacks that hold a reference for a while must not end this a second time.
    reference();
    cleanup();
    m_implementation->space->m_simulation = nullptr;
}

void Simulation::add(hyx::RigidBody* body) {
    if (!mayEnter(body, this))
        return;
    Implementation& self = *m_implementation;
    hyx::RigidBody::Implementation& entering = body->implementation();
    self.world.add(entering);
    entering.carrier.world = &self.world;
    entering.simulation = this;
    self.bodies.push_back(body);
    self.changeStructure();
    self.bodyAdded.trigger(body);
    for (auto const& geometry : hyxCollide::GeometryPtrVector(body->getGeometries()))
        self.geometryAdded.trigger(geometry.get());
}

void Simulation::add(hyxCollide::Geometry* geometry) {
    if (!mayEnter(geometry, this))
        return;
    if (geometry->getRigidBody())
        throw std::invalid_argument("the geometry belongs to a body; add the body");
    Implementation& self = *m_implementation;
    self.world.add(*geometry);
    geometry->implementation().simulation = this;
    self.loneGeometries.push_back(geometry);
    self.changeStructure();
    self.geometryAdded.trigger(geometry);
}

void Simulation::add(hyx::Constraint* constraint) {
    if (!mayEnter(constraint, this))
        return;
    Implementation& self = *m_implementation;
    constraint->implementation().simulation = this;
    self.world.add(constraint->implementation());
    self.constraints.push_back(constraint);
    self.changeStructure();
}

void Simulation::add(hyx::Process* process) {
    if (!mayEnter(process, this))
        return;
    m_implementation->processes.push_back(process);
    m_implementation->changeStructure();
    process->setSimulation(this);
}

void Simulation::add(hyx::Frame* frame) {
    if (!frame || contains(m_implementation->frames, frame))
        return;
    m_implementation->frames.push_back(frame);
    m_implementation->changeStructure();
}

void Simulation::add(EventListener* listener, int priority) {
    if (!mayEnter(listener, this))
        return;
    Implementation& self = *m_implementation;
    auto const place =
        std::upper_bound(self.priorities.begin(), self.priorities.end(), priority) - self.priorities.begin();
    self.priorities.insert(self.priorities.begin() + place, priority);
    self.listeners.insert(self.listeners.begin() + place, listener);
    listener->m_simulation = this;
    self.changeStructure();
    listener->addNotification();
}

void Simulation::add(Assembly* assembly) {
    if (!mayEnter(assembly, this))
        return;
    m_implementation->assemblies.push_back(assembly);
    assembly->enter(this);
}

void Simulation::add(hyx::Material* material) {
    if (material && !contains(m_implementation->materials, material))
        m_implementation->materials.push_back(material);
}

void Simulation::add(hyx::ContactMaterial* contactMaterial) {
    if (!contactMaterial)
        return;
    hyx::Material const* first = contactMaterial->getMaterial1();
    hyx::Material const* second = contactMaterial->getMaterial2();
    m_implementation->world.contactMaterials[std::minmax(first, second)] = contactMaterial;
}

bool Simulation::remove(hyx::RigidBody* body) {
    Implementation& self = *m_implementation;
    hyx::ref_ptr<hyx::RigidBody> const kept = takeOut(self.bodies, body);
    if (!kept)
        return false;
    hyx::RigidBody::Implementation& leaving = body->implementation();
    self.world.remove(leaving);
    leaving.carrier.world = nullptr;
    leaving.simulation = nullptr;
    self.changeStructure();
    for (auto const& geometry : hyxCollide::GeometryPtrVector(body->getGeometries()))
        geometry->getRemoveEvent().trigger(geometry.get());
    body->getRemoveEvent().trigger(body);
    self.bodyRemoved.trigger(body);
    return true;
}

bool Simulation::remove(hyxCollide::Geometry* geometry) {
    Implementation& self = *m_implementation;
    hyx::ref_ptr<hyxCollide::Geometry> const kept = takeOut(self.loneGeometries, geometry);
    if (!kept)
        return false;
    self.world.remove(*geometry);
    geometry->implementation().simulation = nullptr;
    self.changeStructure();
    geometry->getRemoveEvent().trigger(geometry);
    return true;
}

bool Simulation::remove(hyx::Constraint* constraint) {
    Implementation& self = *m_implementation;
    hyx::ref_ptr<hyx::Constraint> const kept = takeOut(self.constraints, constraint);
    if (!kept)
        return false;
    self.world.remove(constraint->implementation());
    constraint->implementation().simulation = nullptr;
    self.changeStructure();
    return true;
}

bool Simulation::remove(hyx::Process* process) {
    hyx::ref_ptr<hyx::Process> const kept = takeOut(m_implementation->processes, process);
    if (!kept)
        return false;
    m_implementation->changeStructure();
    process->setSimulation(nullptr);
    return true;
}

bool Simulation::remove(hyx::Frame* frame) {
    if (!takeOut(m_implementation->frames, frame))
        return false;
    m_implementation->changeStructure();
    return true;
}

bool Simulation::remove(EventListener* listener) {
    Implementation& self = *m_implementation;
    auto const place = std::find(self.listeners.begin(), self.listeners.end(), listener);
    if (!listener || place == self.listeners.end())
        return false;
    hyx::ref_ptr<EventListener> const kept = listener;
    self.priorities.erase(self.priorities.begin() + (place - self.listeners.begin()));
    self.listeners.erase(place);
    self.changeStructure();
    listener->removeNotification();
    listener->m_simulation = nullptr;
    return true;
}

bool Simulation::remove(Assembly* assembly) {
    hyx::ref_ptr<Assembly> const kept = takeOut(m_implementation->assemblies, assembly);
    if (!kept)
        return false;
    assembly->leave();
    return true;
}

bool Simulation::remove(hyx::Material* material) {
    return takeOut(m_implementation->materials, material).valid();
}

bool Simulation::remove(hyx::ContactMaterial* contactMaterial) {
    return contactMaterial && std::erase_if(m_implementation->world.contactMaterials, [=](auto const& entry) {
                                  return entry.second.get() == contactMaterial;
                              }) > 0;
}

void Simulation::cleanup() {
    Implementation& self = *m_implementation;
    auto const removeAll = [this](auto const& list) {
        while (!list.empty())
            remove(list.back().get());
    };
    removeAll(self.assemblies);
    removeAll(self.listeners);
    removeAll(self.processes);
    removeAll(self.constraints);
    removeAll(self.frames);
    self.world.dropPairs();
    removeAll(self.bodies);
    removeAll(self.loneGeometries);
    removeAll(self.materials);
    self.world.contactMaterials.clear();
    self.geometries.clear();
    setTimeStamp(0);
}

hyx::RigidBodyPtrVector const& Simulation::getRigidBodies() const {
    return m_implementation->bodies;
}

hyx::ConstraintPtrVector const& Simulation::getConstraints() const {
    return m_implementation->constraints;
}

ProcessPtrVector const& Simulation::getProcesses() const {
    return m_implementation->processes;
}

FramePtrVector const& Simulation::getFrames() const {
    return m_implementation->frames;
}

EventListenerPtrVector const& Simulation::getEventListeners() const {
    return m_implementation->listeners;
}

AssemblyPtrVector const& Simulation::getAssemblies() const {
    return m_implementation->assemblies;
}

hyx::Vector<hyx::ref_ptr<hyx::Material>> const& Simulation::getMaterials() const {
    return m_implementation->materials;
}

hyx::RigidBody* Simulation::getRigidBody(hyx::Name const& name) const {
    return findNamed(m_implementation->bodies, name);
}

hyx::Constraint* Simulation::getConstraint(hyx::Name const& name) const {
    return findNamed(m_implementation->constraints, name);
}

Assembly* Simulation::getAssembly(hyx::Name const& name) const {
    if (Assembly* assembly = findNamed(m_implementation->assemblies, name))
        return assembly;
    for (auto const& assembly : m_implementation->assemblies)
        if (Assembly* inner = assembly->getAssembly(name))
            return inner;
    return nullptr;
}

hyx::Material* Simulation::getMaterial(hyx::Name const& name) const {
    return findNamed(m_implementation->materials, name);
}

hyx::ContactMaterial* Simulation::getContactMaterial(hyx::Material const* first, hyx::Material const* second) const {
    return m_implementation->world.contactMaterial(first, second);
}

hyxCollide::Space* Simulation::getSpace() const {
    return m_implementation->space.get();
}

Simulation::BodyEvent& Simulation::getBodyAddedEvent() {
    return m_implementation->bodyAdded;
}

Simulation::BodyEvent& Simulation::getBodyRemovedEvent() {
    return m_implementation->bodyRemoved;
}

Simulation::GeometryEvent& Simulation::getGeometryAddedEvent() {
    return m_implementation->geometryAdded;
}

hyx::UInt Simulation::getStructureRevision() const {
    return m_implementation->structureRevision;
}

} // namespace hyxSDK
