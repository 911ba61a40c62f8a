// Model files that the scene-graph library has no reader for, or no good one, through the asset importer.
#include "reference/machinery/model_files/asset_reader.h"

#include "reference/machinery/files/late_library.h"

#include <osgDB/FileNameUtils>
#include <osgDB/FileUtils>
#include <osgDB/Registry>

#include <array>
#include <stdexcept>

namespace hyxOSG {
namespace {

// Left out: formats that the importer crashes on or never ends with when they are damaged (mdl, cob, md5mesh, off),
// obj, ply, and those that the scene-graph library reads well itself.
constexpr std::array extensions{"gltf", "glb", "fbx",  "blend", "3mf",     "amf", "ase", "assbin", "b3d", "bvh",
                                "csm",  "hmp", "ifc",  "irr",   "irrmesh", "lxo", "m3d", "md3",    "mdc", "ms3d",
                                "ndo",  "nff", "ogex", "pk3",   "q3o",     "q3s", "raw", "scn",    "sib", "smd",
                                "step", "ter", "uc",   "vta",   "x3d",     "xgl", "zgl"};

/// COLLADA is read by the scene-graph library where its reader is installed; self-contained packages have none.
bool isLeftToOthers(std::string const& extension) {
    auto* const registry = osgDB::Registry::instance();
    return extension == "dae" &&
           osgDB::fileType(registry->findLibraryFile(registry->createLibraryNameForExtension(extension), nullptr,
                                                     osgDB::CASE_SENSITIVE)) == osgDB::REGULAR_FILE;
}

AssetFileReader& assetFileReader() {
    static AssetFileReader& reader = **static_cast<AssetFileReader* const*>(
        hyx::findLate("libhyx_assets.so", "hyxReadAssets", "the asset importer"));
    return reader;
}

class AssetReader : public osgDB::ReaderWriter {
public:
    AssetReader() {
        for (char const* const extension : extensions)
            supportsExtension(extension, "through the asset importer");
        supportsExtension("dae", "through the asset importer, where there is no other reader");
    }

    char const* className() const override { return "Asset importer"; }

    ReadResult readNode(std::string const& file, Options const* options) const override {
        std::string const extension = osgDB::getLowerCaseFileExtension(file);
        if (!acceptsExtension(extension) || isLeftToOthers(extension))
            return ReadResult::FILE_NOT_HANDLED;
        std::string const path = osgDB::findDataFile(file, options);
        if (path.empty())
            return ReadResult::FILE_NOT_FOUND;
        try {
            return assetFileReader()(path, extension);
        } catch (std::runtime_error const& failure) {
            return ReadResult(std::string(failure.what()));
        }
    }
};

osgDB::RegisterReaderWriterProxy<AssetReader> assimpRegistration;

} // namespace
} // namespace hyxOSG
