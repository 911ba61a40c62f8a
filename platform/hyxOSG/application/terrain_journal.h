// Getting terrains ready for the playback of a journal.
#pragma once

namespace hyxSDK {
class Simulation;
} // namespace hyxSDK

namespace hyxOSG {

/// Prepares the terrains of `simulation` for a journal that moves the bodies: bodies that are played back no longer
/// change the soil, which means no compaction, no digging tools and no grains. What was there stays. Nothing for null.
void setupTerrainJournalPlaybackSettings(hyxSDK::Simulation* simulation);

} // namespace hyxOSG
