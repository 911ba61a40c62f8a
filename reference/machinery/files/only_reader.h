// Readers that stand in for plugins of the scene-graph library.
#pragma once

#include <osgDB/ReaderWriter>

#include <string>

namespace hyxOSG {

/// Keeps the library from trying its own plugin for `extension` after the reader that is registered here has failed:
/// the plugin crashes on damaged files.
void keepOnlyReader(std::string const& extension);

/// The plugin that `keepOnlyReader` keeps away, for writing; null for other extensions, and where there is none.
osgDB::ReaderWriter* hiddenWriter(std::string const& extension);

} // namespace hyxOSG
