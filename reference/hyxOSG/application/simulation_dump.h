// Writes the state of a simulation after each step.
#pragma once

#include <string>

namespace hyxSDK {
class Simulation;
} // namespace hyxSDK

namespace hyxOSG {

/// One file of JSON a step: time, and name, position, rotation and velocities of each body.
class SimulationDump {
public:
    /// Writing begins anew with number 1.
    void setEnable(bool enable);

    bool enabled() const { return m_enabled; }

    /// The folder the files are written to; it is made when it is missing.
    void setFolder(std::string const& folder) { m_folder = folder; }

    /// Throws std::filesystem::filesystem_error when the file cannot be written.
    void write(hyxSDK::Simulation const& simulation);

private:
    bool m_enabled = false;
    std::string m_folder = "hyx_profile_dump";
    unsigned long m_number = 0;
};

} // namespace hyxOSG
