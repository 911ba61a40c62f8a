// Groups of simulated things that are added and removed as one.
#pragma once

#include "platform/hyx/bodies/frame.h"
#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyx/joints/constraint.h"
#include "platform/hyx/objects/component.h"
#include "platform/hyx/objects/process.h"
#include "platform/hyxCollide/geometry.h"
#include "platform/hyxSDK/event_listener.h"

namespace hyxSDK {

class Assembly;
class Simulation;

using AssemblyPtrVector = hyx::Vector<hyx::ref_ptr<Assembly>>;
using EventListenerPtrVector = hyx::Vector<hyx::ref_ptr<EventListener>>;
using ProcessPtrVector = hyx::Vector<hyx::ref_ptr<hyx::Process>>;
using FramePtrVector = hyx::Vector<hyx::ref_ptr<hyx::Frame>>;

/// A group of bodies, constraints and further assemblies that enter and leave a simulation together. What is added to
/// an assembly in a simulation enters the simulation at once. Null and objects already here are ignored by every `add`;
/// every `remove` says whether the object was here.
class Assembly : public hyx::Component {
public:
    explicit Assembly(hyx::Name const& name = hyx::Name());

    void add(hyx::RigidBody* body);
    void add(hyxCollide::Geometry* geometry);
    void add(hyx::Constraint* constraint);
    void add(hyx::Process* process);
    void add(hyx::Frame* frame);
    void add(EventListener* listener);
    /// Throws std::invalid_argument when the assembly contains this one.
    void add(Assembly* assembly);

    /// Takes an object out of this assembly, and of its simulation; whether it was here.
    bool remove(hyx::RigidBody* body);
    bool remove(hyxCollide::Geometry* geometry);
    bool remove(hyx::Constraint* constraint);
    bool remove(hyx::Process* process);
    bool remove(hyx::Frame* frame);
    bool remove(EventListener* listener);
    bool remove(Assembly* assembly);

    /// Those of this assembly itself, without those of assemblies in it.
    hyx::RigidBodyPtrVector const& getRigidBodies() const { return m_bodies; }

    /// Those of this assembly itself that have no body.
    hyxCollide::GeometryPtrVector const& getGeometries() const { return m_geometries; }

    /// Those of this assembly itself.
    hyx::ConstraintPtrVector const& getConstraints() const { return m_constraints; }

    ProcessPtrVector const& getProcesses() const { return m_processes; }

    FramePtrVector const& getFrames() const { return m_frames; }

    EventListenerPtrVector const& getEventListeners() const { return m_listeners; }

    /// Those in this one itself.
    AssemblyPtrVector const& getAssemblies() const { return m_assemblies; }

    /// By name, searching assemblies in this one too; null when there is none.
    hyx::RigidBody* getRigidBody(hyx::Name const& name) const;
    /// By name, searching assemblies in this one too; null when there is none.
    hyx::Constraint* getConstraint(hyx::Name const& name) const;
    /// By name, searching assemblies in this one too; null when there is none.
    Assembly* getAssembly(hyx::Name const& name) const;

    /// Moves all bodies of this assembly and of those in it, as one rigid whole.
    void transform(hyx::AffineMatrix4x4 const& motion);

    /// The simulation that the assembly is in; null for none.
    Simulation* getSimulation() const { return m_simulation; }

protected:
    ~Assembly() override;

private:
    friend class Simulation;
    void enter(Simulation* simulation);
    void leave();
    bool contains(Assembly const* assembly) const;

    Simulation* m_simulation = nullptr;
    hyx::RigidBodyPtrVector m_bodies;
    hyxCollide::GeometryPtrVector m_geometries;
    hyx::ConstraintPtrVector m_constraints;
    ProcessPtrVector m_processes;
    FramePtrVector m_frames;
    EventListenerPtrVector m_listeners;
    AssemblyPtrVector m_assemblies;
};

} // namespace hyxSDK
