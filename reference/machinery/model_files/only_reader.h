// Readers that stand in for plugins of the scene-graph library.
#pragma once

#include <osgDB/Registry>

#include <string>

namespace hyxOSG {

/// Keeps the library from trying its own plugin for `extension` after the reader that is registered here has failed:
/// the plugin crashes on damaged files.
inline void keepOnlyReader(std::string const& extension) {
    osgDB::Registry::instance()->addFileExtensionAlias(extension, extension + "_without_plugin");
}

} // namespace hyxOSG
