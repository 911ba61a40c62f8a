// The output of libraries that write to files by name, kept in memory.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <string>

namespace hyx {

/// What a writer made: the file it was asked for, and those that it put beside it, such as materials.
struct WrittenFiles {
    bool success = false;
    std::string content;
    std::map<std::string, std::string> besides; ///< by name
};

/// Calls `write` with a path that ends in `name` and leads to memory, so that the library never meets a failing disk:
/// several report success over what they could not write. \throws std::filesystem::filesystem_error
WrittenFiles captureFiles(std::filesystem::path const& name, std::function<bool(std::string const&)> const& write);

} // namespace hyx
