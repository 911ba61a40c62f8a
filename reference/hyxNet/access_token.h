// Words that guard services.
#pragma once

#include <string>

namespace hyxNet {

/// A word of 32 random hexadecimal digits.
std::string makeAccessToken();

/// Whether the two are the same, in a time that does not tell how much of them is.
bool sameToken(std::string const& one, std::string const& other);

} // namespace hyxNet
