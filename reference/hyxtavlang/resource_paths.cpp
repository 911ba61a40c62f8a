// Looks for files in packages.
#include "reference/hyxtavlang/resource_paths.h"

#include <filesystem>

namespace hyxtavlang {

namespace fs = std::filesystem;

std::string findResource(std::string const& reference, std::string const& modelPath,
                         std::vector<std::string> const& searchPaths) {
    auto const after = [&](std::string const& scheme) {
        return reference.rfind(scheme, 0) == 0 ? reference.substr(scheme.size()) : "";
    };
    std::string const package = after("package://"), model = after("model://"), file = after("file://");
    fs::path const wanted = !package.empty() ? package : !model.empty() ? model : !file.empty() ? file : reference;
    if (wanted.is_absolute())
        return fs::is_regular_file(wanted) ? wanted.string() : "";

    // A package's own folder often lies above the model, or is itself in the search path.
    fs::path const inside = wanted.lexically_relative(*wanted.begin());
    std::vector<fs::path> folders(searchPaths.begin(), searchPaths.end());
    for (fs::path folder = fs::absolute(modelPath).parent_path(); folder.has_relative_path();
         folder = folder.parent_path())
        folders.push_back(folder);
    for (fs::path const& folder : folders)
        for (fs::path const& candidate : {folder / wanted, folder / inside})
            if (fs::is_regular_file(candidate))
                return candidate.lexically_normal().string();
    return "";
}

} // namespace hyxtavlang
