// The gravity of a process that can also be stepped by itself.
#pragma once

#include "platform/hyx/objects/process.h"
#include "platform/hyx/values/vec3.h"
#include "platform/hyxSDK/simulation.h"
#include "reference/hyx/values/number_checks.h"

namespace hyx {

/// That of the simulation that the process is in, and its own while it is in none. Read at each step: a simulation's
/// gravity may change at any time.
class ProcessGravity {
public:
    /// Throws std::invalid_argument when not finite.
    void setOwn(Vec3 const& gravity) { m_own = requireFinite(gravity, "gravity"); }

    Vec3 of(Process const& process) const {
        return process.getSimulation() ? process.getSimulation()->getGravity() : m_own;
    }

private:
    Vec3 m_own = Vec3(0, 0, -hyxSDK::Simulation::standardGravity);
};

} // namespace hyx
