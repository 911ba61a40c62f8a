// A reader in a library of its own, which is loaded when the first file needs it.
#pragma once

#include "reference/hyxtavlang/model_reader.h"

namespace hyxtavlang {

/// Fills the tree from a file; throws ModelError. The library offers a pointer to it by name.
using LateReader = void(std::string const& path, std::vector<std::string> const& searchPaths, ModelTree& tree);

} // namespace hyxtavlang
