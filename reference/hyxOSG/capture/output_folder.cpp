// Creating and checking the folder that files are written to.

#include "reference/hyxOSG/capture/output_folder.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <stdexcept>

namespace hyxOSG {

void prepareOutputFolder(std::string const& folder) {
    std::string const path = folder.empty() ? "." : folder;
    std::error_code failure;
    std::filesystem::create_directories(path, failure);
    std::string reason;
    if (!std::filesystem::is_directory(path)) {
        reason = failure ? failure.message() : "it is not a folder";
    } else if (access(path.c_str(), W_OK | X_OK) != 0) {
        reason = std::strerror(errno);
    }
    if (!reason.empty()) {
        throw std::runtime_error("cannot write to the folder \"" + path + "\": " + reason);
    }
}

} // namespace hyxOSG
