// Looks for pictures beside their model.
#include "reference/machinery/model_files/model_picture.h"

#include "reference/machinery/model_files/file_look_up.h"
#include "reference/machinery/model_files/guarded_reading.h"

#include <osgDB/FileNameUtils>
#include <osgDB/FileUtils>

#include <algorithm>

namespace hyxOSG {

std::string besideModel(std::string file, std::string const& folder) {
    std::replace(file.begin(), file.end(), '\\', '/');
    std::string const path = osgDB::concatPaths(folder, file);
    return osgDB::fileExists(path) ? path : osgDB::concatPaths(folder, osgDB::getSimpleFileName(file));
}

osg::ref_ptr<osg::Texture2D> repeatedTexture(osg::Image* image) {
    if (!image)
        return nullptr;
    osg::ref_ptr<osg::Texture2D> const texture = new osg::Texture2D(image);
    texture->setWrap(osg::Texture::WRAP_S, osg::Texture::REPEAT);
    texture->setWrap(osg::Texture::WRAP_T, osg::Texture::REPEAT);
    return texture;
}

osg::ref_ptr<osg::Texture2D> modelPicture(std::string const& file, std::string const& folder) {
    if (file.empty())
        return nullptr;
    std::string const path = besideModel(file, folder);
    if (!mayRead(path) || osgDB::fileType(path) != osgDB::REGULAR_FILE)
        return nullptr;
    return repeatedTexture(readPicture(path).thing.get());
}

} // namespace hyxOSG
