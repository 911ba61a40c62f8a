// Rows of the functions that load files.
#include "binding/vocabulary/rows.h"
#include "platform/hyxOSG/application/terrain_journal.h"
#include "platform/hyxOSG/visuals/read_file.h"
#include "platform/hyxOSG/visuals/rigid_body_render_cache.h"
#include "platform/hyxSDK/simulation.h"

#include <osg/Group>

namespace {

constexpr Declared files_rows[] = {
    FUNCTION(readFile, FREE(hyxOSG::readFile,
                            (std::string const&, hyxSDK::Simulation*, osg::Group*, hyxSDK::Assembly*, double, bool,
                             hyx::UInt, hyxOSG::RigidBodyRenderCache*),
                            nullptr, 1.0, false, hyx::UInt(7), nullptr)),
    FUNCTION(readNodeFile, FREE(hyxOSG::readNodeFile, (std::string const&, bool), true),
             FREE(hyxOSG::readNodeFile, (std::string const&, osgDB::ReaderWriter::Options const*, bool), true)),
    FUNCTION(setupTerrainJournalPlaybackSettings,
             FREE(hyxOSG::setupTerrainJournalPlaybackSettings, (hyxSDK::Simulation*))),
};

} // namespace

ROWS(files_rows);
