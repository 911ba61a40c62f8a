// Reads pictures and textures from files, each once.
#include "reference/hyxOSG/visuals/image_files.h"

#include "reference/machinery/files/missing_file.h"
#include "reference/machinery/meshes/notices.h"
#include "reference/machinery/model_files/guarded_reading.h"

#include <osg/observer_ptr>
#include <osgDB/FileUtils>
#include <osgDB/ReadFile>

#include <map>
#include <utility>

namespace hyxOSG {

osg::ref_ptr<osg::Image> readImage(std::string const& file) {
    std::string const path = osgDB::findDataFile(file);
    if (osgDB::fileType(path) != osgDB::REGULAR_FILE) {
        warn(missingFile("image file", file));
        return nullptr;
    }
    Reading<osg::Image> const reading = readPicture(path);
    if (!reading.thing)
        warn("the image file \"" + file + "\" cannot be read: " + reading.fault);
    return reading.thing;
}

void setRepeat(osg::Texture2D& texture, bool repeat) {
    auto const wrap = repeat ? osg::Texture::REPEAT : osg::Texture::CLAMP_TO_EDGE;
    texture.setWrap(osg::Texture::WRAP_S, wrap);
    texture.setWrap(osg::Texture::WRAP_T, wrap);
}

osg::ref_ptr<osg::Texture2D> readTexture(std::string const& file, bool repeat) {
    static std::map<std::pair<std::string, bool>, osg::observer_ptr<osg::Texture2D>> known;
    auto& place = known[{file, repeat}];
    osg::ref_ptr<osg::Texture2D> texture;
    if (place.lock(texture))
        return texture;
    osg::ref_ptr<osg::Image> const image = readImage(file);
    if (!image)
        return nullptr;
    texture = new osg::Texture2D(image);
    texture->setName(file);
    texture->setFilter(osg::Texture::MIN_FILTER, osg::Texture::LINEAR_MIPMAP_LINEAR);
    texture->setFilter(osg::Texture::MAG_FILTER, osg::Texture::LINEAR);
    texture->setResizeNonPowerOfTwoHint(false);
    setRepeat(*texture, repeat);
    place = texture;
    return texture;
}

} // namespace hyxOSG
