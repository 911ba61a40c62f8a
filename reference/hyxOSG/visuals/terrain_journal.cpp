// Takes from terrains all that would change the soil while a journal plays.
#include "platform/hyxOSG/application/terrain_journal.h"

#include "platform/hyxSDK/simulation.h"
#include "platform/hyxSDK/terrain_instance.h"

namespace hyxOSG {

void setupTerrainJournalPlaybackSettings(hyxSDK::Simulation* simulation) {
    if (!simulation)
        return;
    for (auto const& process : simulation->getProcesses()) {
        auto* const instance = dynamic_cast<hyxSDK::TerrainInstance*>(process.get());
        if (!instance)
            continue;
        instance->setEnableCompaction(false);
        hyxTerrain::Terrain& terrain = *instance->getTerrain();
        terrain.setEnableSoilParticles(false);
        while (!terrain.getTools().empty())
            terrain.removeTool(terrain.getTools().back());
    }
}

} // namespace hyxOSG
