// What a request from outside must pass before anything is made of it.
#pragma once

#include <string>

namespace hyxNet {

/// The most bytes that a message may have.
constexpr int mostRequestBytes = 1 << 20;

/// Checks the token of a JSON request without building anything from it.
/// \throws std::invalid_argument when the token is missing or wrong, or the text is no JSON object, or nested too deep
void checkRequest(std::string const& text, std::string const& token);

} // namespace hyxNet
