// Decides which plugins the scene-graph library loads, and which files a file that is being read may name.
#include "reference/machinery/model_files/file_look_up.h"

#include "reference/machinery/files/own_files.h"

#include <osgDB/FileNameUtils>
#include <osgDB/Registry>

#include <filesystem>
#include <set>

namespace hyxOSG {
namespace {

namespace fs = std::filesystem;

/// Plugins that run code or programs, fetch from the network, unpack archives, or read other files past this look-up.
bool isRefused(std::string const& library) {
    static std::set<std::string> const refused{"osgdb_curl.so", "osgdb_vnc.so",    "osgdb_lua.so",   "osgdb_V8.so",
                                               "osgdb_js.so",   "osgdb_python.so", "osgdb_gecko.so", "osgdb_osga.so",
                                               "osgdb_tgz.so",  "osgdb_osgtgz.so", "osgdb_zip.so",   "osgdb_p3d.so",
                                               "osgdb_pdf.so",  "osgdb_svg.so",    "osgdb_gdal.so",  "osgdb_ogr.so"};
    return refused.contains(library);
}

thread_local fs::path const* allowedFolder = nullptr;

fs::path resolved(fs::path const& path) {
    std::error_code error;
    fs::path const absolute = fs::absolute(path, error);
    fs::path const known = fs::weakly_canonical(absolute, error);
    return error ? absolute.lexically_normal() : known;
}

bool isBelow(fs::path const& folder, fs::path const& file) {
    fs::path const relative = resolved(file).lexically_relative(folder);
    return !relative.empty() && *relative.begin() != "..";
}

class GuardedLookUp : public osgDB::FindFileCallback {
public:
    std::string findDataFile(std::string const& name, osgDB::Options const* options,
                             osgDB::CaseSensitivity sensitivity) override {
        std::string const found = osgDB::FindFileCallback::findDataFile(name, options, sensitivity);
        return mayRead(found) ? found : "";
    }

    /// Never empty: for an empty answer the library would go on in the working folder.
    std::string findLibraryFile(std::string const& name, osgDB::Options const*, osgDB::CaseSensitivity) override {
        std::string const library = osgDB::getSimpleFileName(name);
        std::string const versioned = osgDB::getSimpleFileName(osgDB::getFilePath(name));
        if (!isRefused(library))
            for (std::string const& folder : osgDB::Registry::instance()->getLibraryFilePathList())
                for (std::string const& place : {folder + "/" + library, folder + "/" + versioned + "/" + library})
                    if (fs::path(folder).is_absolute() && osgDB::fileType(place) == osgDB::REGULAR_FILE)
                        return place;
        return "/nonexistent/" + library;
    }
};

/// Keeps the library from opening what was not looked up here: addresses, and absolute paths that a reader takes as
/// they are.
class GuardedReading : public osgDB::ReadFileCallback {
public:
    using Result = osgDB::ReaderWriter::ReadResult;

    Result readObject(std::string const& name, osgDB::Options const* options) override {
        return mayRead(name, options) ? ReadFileCallback::readObject(name, options) : refusal();
    }

    Result readImage(std::string const& name, osgDB::Options const* options) override {
        return mayRead(name, options) ? ReadFileCallback::readImage(name, options) : refusal();
    }

    Result readHeightField(std::string const& name, osgDB::Options const* options) override {
        return mayRead(name, options) ? ReadFileCallback::readHeightField(name, options) : refusal();
    }

    Result readNode(std::string const& name, osgDB::Options const* options) override {
        return mayRead(name, options) ? ReadFileCallback::readNode(name, options) : refusal();
    }

    Result readShader(std::string const& name, osgDB::Options const* options) override {
        return mayRead(name, options) ? ReadFileCallback::readShader(name, options) : refusal();
    }

    Result readScript(std::string const&, osgDB::Options const*) override { return refusal(); }

    Result openArchive(std::string const&, osgDB::ReaderWriter::ArchiveStatus, unsigned int,
                       osgDB::Options const*) override {
        return refusal();
    }

private:
    static bool mayRead(std::string const& name, osgDB::Options const* options) {
        if (osgDB::containsServerAddress(name))
            return false;
        return !allowedFolder || !osgDB::findDataFile(name, options).empty();
    }

    static Result refusal() { return Result(Result::FILE_NOT_FOUND); }
};

/// Those of the system belong to the system's scene-graph library, which would be a second one beside ours.
void lookForOwnFilesFirst(osgDB::Registry& registry) {
    if (std::string const plugins = ownFolder("plugins"); !plugins.empty())
        registry.setLibraryFilePathList(osgDB::FilePathList{plugins});
    if (std::string const fonts = ownFolder("fonts"); !fonts.empty())
        registry.getDataFilePathList().push_back(fonts);
}

/// The scene-graph library's own readers and writers are guarded too, whoever calls them.
bool const installed = [] {
    osgDB::Registry::instance()->setFindFileCallback(new GuardedLookUp);
    osgDB::Registry::instance()->setReadFileCallback(new GuardedReading);
    lookForOwnFilesFirst(*osgDB::Registry::instance());
    return true;
}();

} // namespace

bool mayRead(std::string const& file) {
    return !allowedFolder || file.empty() || isBelow(*allowedFolder, file);
}

ReadingBelow::ReadingBelow(std::string const& file) : m_folder(resolved(file).parent_path()), m_before(allowedFolder) {
    allowedFolder = &m_folder;
}

ReadingBelow::~ReadingBelow() {
    allowedFolder = m_before;
}

} // namespace hyxOSG
