// What a simulation holds.
#pragma once

#include "platform/hyxSDK/simulation.h"
#include "reference/machinery/bullet/physics_world.h"

#include <vector>

namespace hyxSDK {

struct Simulation::Implementation {
    explicit Implementation(Simulation& owner);

    std::vector<hyx::RigidBody*> bodyPointers() const;
    void rebuildGeometries();
    /// Calls one hook of every listener that wants it; listeners may come and go meanwhile.
    void callListeners(int mask, void (EventListener::*hook)(hyx::TimeStamp));

    /// Saves or restores, the same values in the same order.
    void exchangeState(hyx::StateBytes& bytes);

    void changeStructure() {
        ++structureRevision;
        geometriesOutdated = true;
        world.showContacts(std::nullopt);
    }

    Simulation& owner;
    hyx::PhysicsWorld world;
    hyx::ref_ptr<hyxCollide::Space> space;

    hyx::RigidBodyPtrVector bodies;
    hyx::ConstraintPtrVector constraints;
    ProcessPtrVector processes;
    FramePtrVector frames;
    EventListenerPtrVector listeners;
    /// One for each of `listeners`.
    std::vector<int> priorities;
    AssemblyPtrVector assemblies;
    hyx::Vector<hyx::ref_ptr<hyx::Material>> materials;
    hyxCollide::GeometryPtrVector loneGeometries;
    /// All geometries, put together when asked for.
    hyxCollide::GeometryPtrVector geometries;
    bool geometriesOutdated = true;

    hyx::Vec3 gravity{0, 0, -standardGravity};
    hyx::Real timeStep = 1.0 / 60;
    /// The time is counted in steps from a start, so that it stays exact over long runs.
    hyx::TimeStamp startTime = 0;
    hyx::UInt numSteps = 0;
    SolverType solver = ITERATIVE;
    int numIterations = 10;
    bool autoSleep = false;
    bool stepping = false;

    BodyEvent bodyAdded;
    BodyEvent bodyRemoved;
    GeometryEvent geometryAdded;
    hyx::UInt structureRevision = 0;
    Statistics statistics;
};

} // namespace hyxSDK
