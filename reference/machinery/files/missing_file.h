// Says why there is no file to read where one was named.
#pragma once

#include <filesystem>
#include <string>
#include <system_error>

namespace hyxOSG {

inline bool isFolder(std::string const& path) {
    std::error_code error;
    return std::filesystem::is_directory(path, error);
}

inline bool isEmptyFile(std::string const& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error) && std::filesystem::file_size(path, error) == 0 && !error;
}

/// `kind` says what was looked for, as in "model file".
inline std::string missingFile(std::string const& kind, std::string const& path) {
    if (isFolder(path))
        return "the " + kind + " \"" + path + "\" is a folder";
    std::error_code error;
    return std::filesystem::exists(path, error) ? "\"" + path + "\" is a device or pipe, not the " + kind
                                                : "there is no " + kind + " \"" + path + "\"";
}

/// Refuses a path at which there is no file, as Python's own functions would: IsADirectoryError for a folder.
inline void requireFile(std::string const& path) {
    std::error_code error;
    if (std::filesystem::is_regular_file(path, error))
        return;
    auto const reason = isFolder(path) ? std::errc::is_a_directory : std::errc::no_such_file_or_directory;
    throw std::filesystem::filesystem_error("there is no such file", path, std::make_error_code(reason));
}

} // namespace hyxOSG
