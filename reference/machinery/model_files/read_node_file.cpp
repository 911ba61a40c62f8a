// Reads model files, strange ones only after a child process has survived them.
#include "platform/hyxOSG/visuals/read_file.h"
#include "reference/machinery/files/missing_file.h"
#include "reference/machinery/meshes/notices.h"
#include "reference/machinery/model_files/guarded_reading.h"
#include "reference/machinery/model_files/model_state.h"

#include <osg/Node>
#include <osgDB/FileNameUtils>
#include <osgDB/FileUtils>
#include <osgDB/Registry>

namespace hyxOSG {

osg::Node* readNodeFile(std::string const& file, bool useCache) {
    return readNodeFile(file, nullptr, useCache);
}

osg::Node* readNodeFile(std::string const& file, osgDB::Options const* options, bool useCache) {
    std::string const path = osgDB::findDataFile(file, options);
    if (osgDB::fileType(path) != osgDB::REGULAR_FILE) {
        warn(missingFile("model file", file));
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
    Reading<osg::Node> reading = readModel(path, present);
    if (!reading.thing) {
        warn("the model file \"" + path + "\" cannot be read: " + reading.fault);
        return nullptr;
    }
    osg::ref_ptr<osg::Node> node;
    node.swap(reading.thing); // alone, so that its release below does not delete it
    fitIntoScene(*node);
    if (useCache)
        osgDB::Registry::instance()->addEntryToObjectCache(path, node, 0.0, present);
    return useCache ? node.get() : node.release();
}

} // namespace hyxOSG
