// Results of calls between processes.
#pragma once

#include <nlohmann/json.hpp>

#include <string>

namespace hyxNet {

/// What a function answered, as JSON: a text that is none stands for itself.
inline nlohmann::json callResult(std::string const& text) {
    nlohmann::json parsed = nlohmann::json::parse(text, nullptr, false);
    return parsed.is_discarded() ? nlohmann::json(text) : parsed;
}

} // namespace hyxNet
