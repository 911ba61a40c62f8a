// Choices for loading a model.
#pragma once

#include <string>
#include <vector>

namespace hyxtavlang {

/// How a model is loaded; a value, every choice has a default.
struct OptParams {
    OptParams() = default;

    /// Makes the root link of the model static.
    void setFixedBase(bool fixed) { fixedBase = fixed; }

    /// Whether the root link of the model is static; false at first.
    bool getFixedBase() const { return fixedBase; }

    /// Adds a folder that meshes and packages (`package://`) are looked for in.
    void addSearchPath(std::string const& path) { searchPaths.push_back(path); }

    /// The folders that meshes and packages are looked for in, besides the model's own.
    std::vector<std::string> getSearchPaths() const { return searchPaths; }

    /// Lets the links of the model collide with each other. Links that a joint connects never do.
    void setSelfCollision(bool collide) { selfCollision = collide; }

    /// Whether the links of the model collide with each other; true at first.
    bool getSelfCollision() const { return selfCollision; }

    /// Puts `prefix` in front of the names of bodies and joints.
    void setNamePrefix(std::string const& prefix) { namePrefix = prefix; }

    /// What is put in front of the names of bodies and joints; empty at first.
    std::string getNamePrefix() const { return namePrefix; }

    bool fixedBase = false;               ///< whether the root link is static
    std::vector<std::string> searchPaths; ///< folders for meshes and packages
    bool selfCollision = true;            ///< whether links that no joint connects collide with each other
    std::string namePrefix;               ///< in front of all names
};

} // namespace hyxtavlang
