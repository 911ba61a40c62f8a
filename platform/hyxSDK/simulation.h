// The world that steps: bodies, joints, processes, listeners, time.
#pragma once

#include "platform/hyx/bodies/contact_material.h"
#include "platform/hyx/bodies/material.h"
#include "platform/hyxCollide/space.h"
#include "platform/hyxSDK/assembly.h"

#include <memory>

namespace hyxSDK {

/// A world of bodies and what holds and pushes them, advanced in steps of one length. The same steps from the same
/// state give the same bits. Null and objects already here are ignored by every `add`; every `remove` says whether the
/// object was here. An object can be in one simulation only: a second one's `add` throws std::invalid_argument.
class Simulation : public hyx::Object {
public:
    /// How far contacts are solved; joints are solved exactly by all three. ITERATIVE is the fast general one, MULTI
    /// takes substeps of half the length for high piles, DIRECT goes on until nothing changes.
    enum SolverType { MULTI = 0, ITERATIVE = 1, DIRECT = 2 };

    /// m/s2 at the surface of the earth.
    static constexpr hyx::Real standardGravity = 9.80665;

    using BodyEvent = hyx::TypedEvent<hyx::RigidBody*>;
    using GeometryEvent = hyx::TypedEvent<hyxCollide::Geometry*>;

    /// Standard gravity along -Z, time step 1/60 s, ITERATIVE.
    explicit Simulation(hyx::Name const& name = hyx::Name());

    void add(hyx::RigidBody* body);
    /// A geometry without a body stands still at its local transform.
    void add(hyxCollide::Geometry* geometry);
    /// The bodies are not added along; while one of them is missing the constraint does nothing.
    void add(hyx::Constraint* constraint);
    void add(hyx::Process* process);
    void add(hyx::Frame* frame);
    /// Listeners are called in the order of their priorities, the lowest first; those of one priority in the order in
    /// which they were added.
    void add(EventListener* listener, int priority = 0);
    void add(Assembly* assembly);
    void add(hyx::Material* material);
    /// Replaces a contact material of the same pair.
    void add(hyx::ContactMaterial* contactMaterial);

    /// Takes an object out; whether it was here.
    bool remove(hyx::RigidBody* body);
    bool remove(hyxCollide::Geometry* geometry);
    bool remove(hyx::Constraint* constraint);
    bool remove(hyx::Process* process);
    bool remove(hyx::Frame* frame);
    bool remove(EventListener* listener);
    bool remove(Assembly* assembly);
    bool remove(hyx::Material* material);
    bool remove(hyx::ContactMaterial* contactMaterial);
    /// Removes everything; gravity, time step and solver stay. The time goes back to 0.
    void cleanup();

    /// All that are in the simulation, those of assemblies included, in the order in which they came.
    hyx::RigidBodyPtrVector const& getRigidBodies() const;
    /// All that are in the simulation, those of assemblies included.
    hyx::ConstraintPtrVector const& getConstraints() const;
    /// All that are in the simulation, those of assemblies included.
    ProcessPtrVector const& getProcesses() const;
    /// All that are in the simulation, those of assemblies included.
    FramePtrVector const& getFrames() const;
    /// All that are in the simulation, those of assemblies included.
    EventListenerPtrVector const& getEventListeners() const;
    /// Only those added to the simulation itself, not those in other assemblies.
    AssemblyPtrVector const& getAssemblies() const;
    /// Those that were added by themselves.
    hyx::Vector<hyx::ref_ptr<hyx::Material>> const& getMaterials() const;

    /// By name; null when there is none.
    hyx::RigidBody* getRigidBody(hyx::Name const& name) const;
    /// By name; null when there is none.
    hyx::Constraint* getConstraint(hyx::Name const& name) const;
    /// By name; null when there is none.
    Assembly* getAssembly(hyx::Name const& name) const;
    /// By name; null when there is none.
    hyx::Material* getMaterial(hyx::Name const& name) const;
    /// In either order; null when the pair has none.
    hyx::ContactMaterial* getContactMaterial(hyx::Material const* first, hyx::Material const* second) const;

    /// What all geometries of the simulation are in.
    hyxCollide::Space* getSpace() const;

    /// m/s2, of all that is in the simulation, from the next step on. Throws std::invalid_argument when not finite.
    void setGravity(hyx::Vec3 const& gravity);
    hyx::Vec3 getGravity() const;
    /// Seconds. Throws std::invalid_argument unless positive and finite.
    void setTimeStep(hyx::Real timeStep);
    hyx::Real getTimeStep() const;
    /// The simulated time, seconds.
    hyx::TimeStamp getTimeStamp() const;
    void setTimeStamp(hyx::TimeStamp time);

    /// Advances by one time step. Calls from inside a step are refused with std::logic_error.
    void step();
    /// Steps until the time is within half a step of `time`; earlier times do nothing. Returns the number of steps.
    /// Throws std::invalid_argument when not finite.
    hyx::UInt stepTo(hyx::TimeStamp time);

    /// How contacts and joints are solved; ITERATIVE at the start.
    void setSolver(SolverType solver);
    SolverType getSolver() const;
    /// The rounds of contacts in a step, spread over its substeps; 10 at the start. Throws `std::invalid_argument`
    /// unless 1 to 100 000.
    void setNumIterations(int iterations);
    int getNumIterations() const;
    /// Lets bodies at rest fall asleep until something touches them. Off at the start.
    void setEnableAutoSleep(bool enable);
    bool getEnableAutoSleep() const;

    /// All that further steps depend on, as bytes of this machine: time, step, gravity and solver; bodies with their
    /// masses, joints with their motors, ranges and locks; contacts and their loads; the processes' grains, wires,
    /// cables, terrains and random generators. A restored run equals the uninterrupted one bit by bit.
    std::string saveState() const;
    /// Goes back to a state saved when the same objects were here. Throws std::runtime_error, changing nothing, for
    /// anything else.
    void restoreState(std::string const& state);
    /// As above, to and from a file; throws std::filesystem::filesystem_error when it cannot be written, which leaves
    /// the file as it was, or read.
    void save(hyx::String const& fileName) const;
    /// Goes back to the state in a file, see restoreState.
    void restore(hyx::String const& fileName);

    /// Happens after a body came in, and after one went out.
    BodyEvent& getBodyAddedEvent();
    BodyEvent& getBodyRemovedEvent();
    /// Happens after a geometry came in, with its body or alone.
    GeometryEvent& getGeometryAddedEvent();
    /// Counts up whenever anything is added or removed.
    hyx::UInt getStructureRevision() const;

    /// Seconds of real time that the last step took, in all and in its parts.
    struct Statistics {
        double step = 0;
        double collision = 0;
        double solver = 0;
        double listeners = 0;
        hyx::UInt numContactPoints = 0;
    };

    Statistics const& getStatistics() const;

    struct Implementation;

    Implementation& implementation() const { return *m_implementation; }

protected:
    ~Simulation() override;

private:
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxSDK
