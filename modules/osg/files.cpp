// Model and image files, and how they are read.
#include "modules/osg/scene_graph_rows.h"
#include "platform/hyx/objects/notify.h"
#include "platform/osg/file_reading.h"
#include "platform/osg/scene_files.h"

#include <osg/Image>
#include <osg/Node>
#include <osgDB/Options>

#include <stdexcept>
#include <system_error>

namespace osgDB {
namespace {

// Readers and writers in forms that a row can name. A file that cannot be read gives null, what no writer takes false;
// a file that cannot be written throws.
osg::Node* read_node(std::string const& file) {
    return osg::readModelFile(file);
}

osg::Image* read_image(std::string const& file) {
    return osg::readPictureFile(file);
}

template <class Write>
bool succeeds(Write const& write) {
    try {
        write();
        return true;
    } catch (std::system_error const&) {
        throw;
    } catch (std::runtime_error const& refusal) {
        hyx::Notify::instance().notify(hyx::Notify::NOTIFY_WARNING, refusal.what());
        return false;
    }
}

bool write_node(osg::Node const& node, std::string const& file) {
    return succeeds([&] { osg::writeNode(node, file); });
}

bool write_image(osg::Image const& image, std::string const& file) {
    return succeeds([&] { osg::writeImage(image, file); });
}

} // namespace
} // namespace osgDB

namespace {

void set_path(osgDB::Options& self, std::string const& path) {
    self.getDatabasePathList().clear();
    self.getDatabasePathList().push_back(path);
}

constexpr Declared files_rows[] = {
    FUNCTION(new_Options, NEW(osgDB::Options, ()), NEW(osgDB::Options, (std::string const&))),
    FUNCTION(Options_setOptionString, METHOD(osgDB::Options, setOptionString, (std::string const&))),
    FUNCTION(Options_getOptionString, METHOD(osgDB::Options, getOptionString, () const)),
    FUNCTION(Options_setDatabasePath, ADAPTER(osgDB::Options, setDatabasePath, set_path, (std::string const&))),
    SHARED_CLASS_ROWS(osgDB::Options, Options),
    FUNCTION(readNodeFile, SHARED(FREE(osgDB::read_node, (std::string const&)))),
    FUNCTION(readImageFile, SHARED(FREE(osgDB::read_image, (std::string const&)))),
    FUNCTION(writeNodeFile, FREE(osgDB::write_node, (osg::Node const&, std::string const&))),
    FUNCTION(writeImageFile, FREE(osgDB::write_image, (osg::Image const&, std::string const&))),
};

} // namespace

ROWS(files_rows);
