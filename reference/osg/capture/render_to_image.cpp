/// Reading a target back into memory.

#include "platform/hyxOSG/render_to_image.h"

#include "platform/hyx/notify.h"

#include <osg/RenderInfo>
#include <osgDB/WriteFile>

#include <cmath>
#include <cstring>

namespace hyxOSG {
namespace {

/// Depths of 0 to 1 as greys, which every image format can hold.
osg::ref_ptr<osg::Image> greyImage(osg::Image const & depths) {
    osg::ref_ptr<osg::Image> greys = new osg::Image;
    greys->allocateImage(depths.s(), depths.t(), 1, GL_LUMINANCE, GL_UNSIGNED_BYTE, 1);
    auto const * depth = reinterpret_cast<float const *>(depths.data());
    unsigned char * grey = greys->data();
    for (std::size_t i = 0; i < greys->getTotalSizeInBytes(); ++i) {
        grey[i] = static_cast<unsigned char>(std::lround(depth[i] * 255));
    }
    return greys;
}

} // namespace

RenderToImage::RenderToImage(hyx::UInt width, hyx::UInt height, BufferComponent bufferComponent, hyx::UInt samples,
                             TextureFormat textureFormat)
    : RenderTarget(width, height, bufferComponent, samples, textureFormat)
    , m_image(new osg::Image) {
    osg::Texture2D const & result = *resultTexture();
    m_image->allocateImage(int(width), int(height), 1, result.getSourceFormat(), result.getSourceType(), 1);
    std::memset(m_image->data(), 0, m_image->getTotalSizeInBytes());
}

RenderToImage::~RenderToImage() = default;

osg::Image * RenderToImage::getImage() const {
    return m_image.get();
}

bool RenderToImage::extractImageData(unsigned char * buffer, int size) const {
    std::size_t const needed = m_image->getTotalSizeInBytes();
    if (!buffer || size < 0 || std::size_t(size) < needed) {
        return false;
    }
    std::memcpy(buffer, m_image->data(), needed);
    return true;
}

unsigned char * RenderToImage::getImageData() const {
    return m_image->data();
}

bool RenderToImage::saveImage(hyx::String const & file) const {
    osg::ref_ptr<osg::Image> const image = bufferComponent() == DEPTH_BUFFER ? greyImage(*m_image) : m_image;
    if (osgDB::writeImageFile(*image, file)) {
        return true;
    }
    hyx::Notify::instance().notify(hyx::Notify::NOTIFY_WARNING,
                                   "cannot write the image \"" + file + "\": is its folder there, and its extension one of an image format?");
    return false;
}

void RenderToImage::finishFrame(osg::RenderInfo & renderInfo) {
    osg::Texture2D const & result = *resultTexture();
    // Keeps its memory while the size stays.
    m_image->readPixels(0, 0, int(getSize().x), int(getSize().y), result.getSourceFormat(), result.getSourceType(), 1);
    RenderTarget::finishFrame(renderInfo);
}

} // namespace hyxOSG
