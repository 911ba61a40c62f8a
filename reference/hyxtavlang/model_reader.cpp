// Tells by the ending of a model file, and what it begins with, which reader is for it.
#include "reference/hyxtavlang/model_reader.h"

#include "reference/machinery/files/missing_file.h"

#include <tinyxml2.h>

#include <filesystem>

namespace hyxtavlang {
namespace {

std::string endingOf(std::string const& path) {
    std::string ending = std::filesystem::path(path).extension().string();
    for (char& letter : ending)
        letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    return ending;
}

std::string rootElement(std::string const& path) {
    tinyxml2::XMLDocument document;
    if (document.LoadFile(path.c_str()) != tinyxml2::XML_SUCCESS)
        throw ModelError(path + ":" + std::to_string(document.ErrorLineNum()) +
                         ": it is no XML: " + document.ErrorName());
    return document.RootElement() ? document.RootElement()->Name() : "";
}

} // namespace

bool isModelFile(std::string const& path) {
    std::string const ending = endingOf(path);
    return ending == ".json" || ending == ".urdf" || ending == ".xml" || ending == ".mjcf" || ending == ".sdf" ||
           ending == ".world";
}

ModelTree readModel(std::string const& path, OptParams const& params) {
    if (!std::filesystem::is_regular_file(path))
        throw ModelError("the file '" + path + (hyxOSG::isFolder(path) ? "' is a folder" : "' cannot be read"));
    if (!isModelFile(path))
        throw ModelError(
            "the file '" + path +
            "' is of a closed format; models with the endings .json, .urdf, .xml, .mjcf, .sdf and .world are read");
    if (endingOf(path) == ".json")
        return readScene(path, params.searchPaths);
    if (hyxOSG::isEmptyFile(path))
        throw ModelError("the file '" + path + "' is empty: export or copy it again");
    if (endingOf(path) == ".sdf" || endingOf(path) == ".world")
        return readSdf(path, params.searchPaths);
    if (endingOf(path) == ".urdf")
        return readUrdf(path, params.searchPaths);
    std::string const root = rootElement(path);
    if (root == "robot")
        return readUrdf(path, params.searchPaths);
    if (root == "sdf")
        return readSdf(path, params.searchPaths);
    if (root == "mujoco")
        return readMjcf(path, params.searchPaths);
    throw ModelError(path + ":1: expected <mujoco>, <robot> or <sdf> as the first element, not <" + root + ">");
}

} // namespace hyxtavlang
