// Turns a simulation's state into JSON.
#include "reference/hyxOSG/application/simulation_dump.h"

#include "platform/hyxSDK/simulation.h"
#include "reference/hyxOSG/application/body_state_json.h"
#include "reference/machinery/files/whole_file.h"

#include <cstdio>
#include <filesystem>

namespace hyxOSG {
void SimulationDump::setEnable(bool enable) {
    m_enabled = enable;
    m_number = 0;
}

void SimulationDump::write(hyxSDK::Simulation const& simulation) {
    nlohmann::json state = {{"time", simulation.getTimeStamp()}, {"bodies", nlohmann::json::array()}};
    for (auto const& body : simulation.getRigidBodies())
        state["bodies"].push_back(bodyState(*body));
    std::filesystem::create_directories(m_folder);
    char name[32];
    std::snprintf(name, sizeof name, "state_%06lu.json", ++m_number);
    hyx::writeWholeFile(std::filesystem::path(m_folder) / name, state.dump(1) + "\n", hyx::Durability::UNSYNCED);
}

} // namespace hyxOSG
