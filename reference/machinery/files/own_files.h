// Files that an installed package brings along.
#pragma once

#include <string>

namespace hyxOSG {

/// A folder beside this library that a self-contained package has: "plugins" of the scene-graph library, "fonts".
/// "" where the system's are used.
std::string ownFolder(std::string const& name);

} // namespace hyxOSG
