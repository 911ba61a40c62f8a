// Reads model files, strange ones only after a child process has survived them.
#include "platform/hyxOSG/visuals/read_file.h"
#include "reference/machinery/meshes/notices.h"
#include "reference/machinery/model_files/model_state.h"
#include "reference/machinery/model_files/trial_process.h"

#include <osg/Node>
#include <osgDB/FileNameUtils>
#include <osgDB/FileUtils>
#include <osgDB/ReadFile>

#include <set>

namespace hyxOSG {
namespace {

/// Formats whose readers have never crashed or hung on damaged files. All others are read in a process of their own
/// first.
bool isTrusted(std::string const& extension) {
    static std::set<std::string> const trusted{"obj", "ply", "stl",  "dae",  "gltf", "glb",
                                               "fbx", "osg", "osgt", "osgb", "osgx", "3ds"};
    return trusted.contains(extension);
}

osg::ref_ptr<osg::Node> read(std::string const& path, osgDB::Options const* options) {
    osgDB::ReaderWriter::ReadResult result = osgDB::Registry::instance()->readNode(path, options);
    if (!result.validNode())
        warn("the model file \"" + path + "\" cannot be read: " +
             (result.notHandled()        ? "there is no reader for its kind"
              : result.message().empty() ? "it is damaged"
                                         : result.message()));
    return result.getNode();
}

bool survivesTrial(std::string const& path, osgDB::Options const* options) {
    Trial const trial = tryInChild([&] { return osgDB::readRefNodeFile(path, options).valid(); });
    if (trial == Trial::CRASHED)
        warn("the model file \"" + path + "\" is damaged: its reader crashes on it");
    if (trial == Trial::ENDLESS)
        warn("the model file \"" + path + "\" is damaged: its reader never ends");
    return trial == Trial::SUCCEEDED || trial == Trial::FAILED; // a plain failure is reported by the real reading
}

} // namespace

osg::Node* readNodeFile(std::string const& file, bool useCache) {
    return readNodeFile(file, nullptr, useCache);
}

osg::Node* readNodeFile(std::string const& file, osgDB::Options const* options, bool useCache) {
    std::string const path = osgDB::findDataFile(file, options);
    if (osgDB::fileType(path) != osgDB::REGULAR_FILE) {
        warn("there is no model file \"" + file + "\"");
        return nullptr;
    }
    osg::ref_ptr<osgDB::Options> const present = options ? options->cloneOptions() : new osgDB::Options;
    // The time for making strips grows with the square of the number of triangles: minutes for a large STL file.
    present->setOptionString(present->getOptionString() + " noTriStripPolygons");
    if (useCache) {
        present->setObjectCacheHint(osgDB::Options::CACHE_NODES);
        if (auto const known = osgDB::Registry::instance()->getRefFromObjectCache(path, present))
            return known->asNode();
    }
    if (!isTrusted(osgDB::getLowerCaseFileExtension(path)) && !survivesTrial(path, present))
        return nullptr;
    osg::ref_ptr<osg::Node> node = read(path, present);
    if (node)
        fitIntoScene(*node);
    bool const kept = node && useCache;
    if (kept)
        osgDB::Registry::instance()->addEntryToObjectCache(path, node, 0.0, present);
    return kept ? node.get() : node.release();
}

} // namespace hyxOSG
