// The folder that files are written to.
#pragma once

#include <string>

namespace hyxOSG {

/// Makes sure that files can be written to the folder, creating it where it is missing; "" is the working directory.
/// \throws std::filesystem::filesystem_error with the folder's name and the reason
void prepareOutputFolder(std::string const& folder);

} // namespace hyxOSG
