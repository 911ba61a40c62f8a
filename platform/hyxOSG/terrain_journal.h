#pragma once

namespace hyxSDK {
class Simulation;
}

namespace hyxOSG {

/// Makes the terrains of `simulation` follow a journal that is played back: their renderers rebuild the surface from the
/// recorded heights at every step and their own dynamics rest. Nothing for null.
void setupTerrainJournalPlaybackSettings(hyxSDK::Simulation * simulation);

} // namespace hyxOSG
