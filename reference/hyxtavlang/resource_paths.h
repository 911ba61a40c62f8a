// Files that models refer to.
#pragma once

#include <string>
#include <vector>

namespace hyxtavlang {

/// The file that `reference` (`package://name/rest`, `file://path` or a path) means in the model at `modelPath`; looked
/// for in the model's folder and those above it, and in `searchPaths`. Empty when there is none.
std::string findResource(std::string const& reference, std::string const& modelPath,
                         std::vector<std::string> const& searchPaths);

} // namespace hyxtavlang
