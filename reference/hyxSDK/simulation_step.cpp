// A step of the simulation in its order: listeners, processes, the physics, time.
#include "platform/hyxPython/native_work.h"
#include "platform/hyxSDK/simulation.h"
#include "reference/hyx/values/number_checks.h"
#include "reference/hyxPython/native_work.h"
#include "reference/hyxSDK/simulation_implementation.h"

#include <chrono>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace hyxSDK {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int mostIterations = 100000;

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

hyx::PhysicsWorld::Effort effortOf(Simulation::SolverType solver) {
    switch (solver) {
    case Simulation::MULTI:
        return hyx::StepSolver::MORE;
    case Simulation::ITERATIVE:
        return hyx::StepSolver::USUAL;
    case Simulation::DIRECT:
        return hyx::StepSolver::ALL;
    }
    throw std::invalid_argument("a simulation's solver is MULTI, ITERATIVE or DIRECT");
}

/// Refuses a step within a step.
class StepGuard {
public:
    explicit StepGuard(bool& stepping) : m_stepping(stepping) {
        if (stepping)
            throw std::logic_error("the simulation is in the middle of a step already");
        m_stepping = true;
    }

    ~StepGuard() { m_stepping = false; }

private:
    bool& m_stepping;
};

} // namespace

void Simulation::Implementation::callListeners(int mask, void (EventListener::*hook)(hyx::TimeStamp)) {
    auto const start = Clock::now();
    hyx::TimeStamp const time = owner.getTimeStamp();
    if (!listeners.empty())
        hyxPython::waitForNativeWork(); // they may look at another simulation
    EventListenerPtrVector const called = listeners;
    for (auto const& listener : called)
        if (listener->isEnabled() && (listener->getMask() & mask) && listener->getSimulation() == &owner)
            (listener.get()->*hook)(time);
    statistics.listeners += secondsSince(start);
}

void Simulation::setGravity(hyx::Vec3 const& gravity) {
    m_implementation->gravity = hyx::requireFinite(gravity, "gravity");
    m_implementation->world.setGravity(gravity);
}

hyx::Vec3 Simulation::getGravity() const {
    return m_implementation->gravity;
}

void Simulation::setTimeStep(hyx::Real timeStep) {
    constexpr hyx::Real least = 1e-6; // seconds: below, positions no longer change by what a step adds to them
    if (hyx::requirePositive(timeStep, "the time step") < least)
        throw std::invalid_argument("the time step must be at least 1e-6 s");
    setTimeStamp(getTimeStamp());
    m_implementation->timeStep = timeStep;
}

hyx::Real Simulation::getTimeStep() const {
    return m_implementation->timeStep;
}

hyx::TimeStamp Simulation::getTimeStamp() const {
    return m_implementation->startTime + m_implementation->numSteps * m_implementation->timeStep;
}

void Simulation::setTimeStamp(hyx::TimeStamp time) {
    m_implementation->startTime = hyx::requireFinite(time, "the time");
    m_implementation->numSteps = 0;
}

void Simulation::step() {
    Implementation& self = *m_implementation;
    // A listener may drop the last outside reference to the simulation.
    hyx::ref_ptr<Simulation> const kept = getReferenceCount() > 0 ? this : nullptr;
    StepGuard const guard(self.stepping);
    auto const start = Clock::now();
    self.statistics.listeners = 0;
    // PRE_STEP listeners run behind all PRE_COLLIDE_STEP ones, both before the world moves.
    self.callListeners(EventListener::PRE_COLLIDE_STEP, &EventListener::preCollide);
    self.callListeners(EventListener::PRE_STEP, &EventListener::pre);
    if (!self.processes.empty())
        hyxPython::waitForNativeWork();
    ProcessPtrVector const processes = self.processes;
    for (auto const& process : processes)
        process->preStep(getTimeStamp(), self.timeStep);
    hyx::StepTimes times;
    {
        hyxPython::NativeWork const work(self.world.standsAlone() ? this : nullptr);
        times = self.world.step(self.timeStep);
    }
    ++self.numSteps;
    if (!processes.empty())
        hyxPython::waitForNativeWork();
    for (auto const& process : processes)
        if (process->getSimulation() == this)
            process->postStep(getTimeStamp(), self.timeStep);
    self.callListeners(EventListener::POST_STEP, &EventListener::post);
    self.callListeners(EventListener::LAST_STEP, &EventListener::last);
    self.statistics.collision = times.collision;
    self.statistics.solver = times.solver;
    self.statistics.numContactPoints = self.world.numContactPoints();
    self.statistics.step = secondsSince(start);
}

hyx::UInt Simulation::stepTo(hyx::TimeStamp time) {
    hyx::requireFinite(time, "the time to step to");
    double const mostSteps = std::ldexp(1, std::numeric_limits<double>::digits); // further ones change no time stamp
    if ((time - getTimeStamp()) / getTimeStep() > mostSteps)
        throw std::invalid_argument("the time to step to is more steps away than can be counted");
    hyx::UInt steps = 0;
    hyxPython::InterruptWatch watch;
    for (; getTimeStamp() + 0.5 * getTimeStep() < time && !watch.interrupted(); ++steps)
        step();
    return steps;
}

void Simulation::setSolver(SolverType solver) {
    if (solver == m_implementation->solver)
        return;
    m_implementation->world.setEffort(effortOf(solver));
    m_implementation->solver = solver;
}

Simulation::SolverType Simulation::getSolver() const {
    return m_implementation->solver;
}

void Simulation::setNumIterations(int iterations) {
    if (iterations < 1 || iterations > mostIterations)
        throw std::invalid_argument("a solver takes 1 to 100000 iterations");
    m_implementation->numIterations = iterations;
    m_implementation->world.setNumIterations(iterations);
}

int Simulation::getNumIterations() const {
    return m_implementation->numIterations;
}

void Simulation::setEnableAutoSleep(bool enable) {
    m_implementation->autoSleep = enable;
    m_implementation->world.setAutoSleep(enable, m_implementation->bodyPointers());
}

bool Simulation::getEnableAutoSleep() const {
    return m_implementation->autoSleep;
}

Simulation::Statistics const& Simulation::getStatistics() const {
    return m_implementation->statistics;
}

} // namespace hyxSDK
