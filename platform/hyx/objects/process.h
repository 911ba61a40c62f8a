// The base of what a simulation carries along beside its bodies.
#pragma once

#include "platform/hyx/objects/component.h"

namespace hyxSDK {
class Simulation;
} // namespace hyxSDK

namespace hyx {

/// Something with dynamics of its own that a simulation carries along: particles, wires, terrains, sensors.
class Process : public Component {
public:
    using Component::Component;

    /// Called when this enters a simulation, and with null when it leaves. An override calls this one.
    virtual void setSimulation(hyxSDK::Simulation* simulation) { m_simulation = simulation; }

    /// The simulation that the process is in; null for none.
    hyxSDK::Simulation* getSimulation() const { return m_simulation; }

    /// Called before collision detection and the solver; forces put on bodies here act in this step. `time` is the time
    /// at the start of the step, both in seconds.
    virtual void preStep(TimeStamp time, Real timeStep);
    /// Called when all bodies have moved; `time` is the time at the end of the step.
    virtual void postStep(TimeStamp time, Real timeStep);

protected:
    ~Process() override = default;

private:
    hyxSDK::Simulation* m_simulation = nullptr;
};

} // namespace hyx
