// Reads the decorator's textures.
#include "reference/hyxOSG/decoration/texture_file.h"

#include "reference/hyxOSG/visuals/image_files.h"

namespace hyxOSG {

osg::ref_ptr<osg::Texture2D> loadScreenTexture(std::string const& file) {
    osg::ref_ptr<osg::Image> const image = readImage(file);
    if (!image || !image->valid())
        return nullptr;
    osg::ref_ptr<osg::Texture2D> texture = new osg::Texture2D(image);
    texture->setResizeNonPowerOfTwoHint(false);
    texture->setWrap(osg::Texture2D::WRAP_S, osg::Texture2D::CLAMP_TO_EDGE);
    texture->setWrap(osg::Texture2D::WRAP_T, osg::Texture2D::CLAMP_TO_EDGE);
    return texture;
}

} // namespace hyxOSG
