// Reads single files for scripts that want them as they are.
#include "platform/osg/file_reading.h"

#include "reference/machinery/files/missing_file.h"
#include "reference/machinery/meshes/notices.h"
#include "reference/machinery/model_files/guarded_reading.h"

#include <osgDB/FileUtils>

namespace osg {
namespace {

template <class Thing, class Read>
Thing* readFound(std::string const& file, Read const& read) {
    std::string const path = osgDB::findDataFile(file);
    if (osgDB::fileType(path) != osgDB::REGULAR_FILE) {
        hyxOSG::warn(hyxOSG::missingFile("file", file));
        return nullptr;
    }
    hyxOSG::Reading<Thing> reading = read(path);
    if (!reading.thing)
        hyxOSG::warn("the file \"" + path + "\" cannot be read: " + reading.fault);
    return reading.thing.release();
}

} // namespace

osg::Node* readModelFile(std::string const& file) {
    return readFound<osg::Node>(file, [](std::string const& path) { return hyxOSG::readModel(path, nullptr); });
}

osg::Image* readPictureFile(std::string const& file) {
    return readFound<osg::Image>(file, hyxOSG::readPicture);
}

} // namespace osg
