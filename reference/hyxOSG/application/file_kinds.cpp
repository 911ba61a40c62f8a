// Tells files by their endings.
#include "reference/hyxOSG/application/file_kinds.h"

#include "reference/hyxtavlang/model_reader.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <string_view>

namespace hyxOSG {

FileKind fileKind(std::string const& path) {
    std::string ending = std::filesystem::path(path).extension();
    std::ranges::transform(ending, ending.begin(), [](unsigned char letter) { return char(std::tolower(letter)); });
    auto const is = [&ending](auto const& endings) { return std::ranges::find(endings, ending) != endings.end(); };
    using namespace std::string_view_literals;
    if (ending == ".py")
        return FileKind::SCRIPT;
    if (hyxtavlang::isModelFile(path))
        return FileKind::SCENE;
    if (is(std::array{".h5"sv, ".hdf5"sv}))
        return FileKind::JOURNAL;
    if (ending == ".state")
        return FileKind::STATE;
    if (is(std::array{".gltf"sv, ".glb"sv, ".obj"sv, ".stl"sv, ".dae"sv, ".ply"sv, ".fbx"sv, ".3ds"sv, ".off"sv, ".x"sv,
                      ".lwo"sv, ".ac"sv, ".dxf"sv, ".wrl"sv, ".blend"sv, ".osg"sv, ".osgt"sv, ".osgb"sv, ".ive"sv}))
        return FileKind::MODEL;
    return FileKind::NONE;
}

} // namespace hyxOSG
