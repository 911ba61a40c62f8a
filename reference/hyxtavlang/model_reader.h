// Reading of model files into trees.
#pragma once

#include "platform/hyxtavlang/model_bodies.h"
#include "platform/hyxtavlang/opt_params.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace hyxtavlang {

/// What is wrong with a model file, a line for each thing.
struct ModelError : std::runtime_error {
    explicit ModelError(std::string const& line) : std::runtime_error(line), lines{line} {}

    explicit ModelError(std::vector<std::string> const& all)
        : std::runtime_error(all.empty() ? "" : all.front()), lines(all) {}

    std::vector<std::string> lines;
};

using ModelTree = std::shared_ptr<tavlang::Physics3D::System>;

/// Reads the model at `path`, of the kind that its ending, or for XML its root element, tells. Throws ModelError.
ModelTree readModel(std::string const& path, OptParams const& params);

/// Whether `readModel` knows the ending of the file.
bool isModelFile(std::string const& path);

ModelTree readScene(std::string const& path, std::vector<std::string> const& searchPaths);
ModelTree readUrdf(std::string const& path, std::vector<std::string> const& searchPaths);
ModelTree readSdf(std::string const& path, std::vector<std::string> const& searchPaths);
ModelTree readMjcf(std::string const& path, std::vector<std::string> const& searchPaths);

} // namespace hyxtavlang
