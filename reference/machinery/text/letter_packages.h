// Which package has fonts for a letter.
#pragma once

#include <string>

namespace hyxOSG {

/// Debian's package; "" for letters of private use.
std::string packageFor(unsigned int letter);

} // namespace hyxOSG
