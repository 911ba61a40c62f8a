// Reading a target back into memory.

#include "platform/hyxOSG/capture/render_to_image.h"

#include "reference/hyxOSG/capture/image_file.h"
#include "reference/machinery/meshes/notices.h"

#include <osg/RenderInfo>
#include <osgDB/FileNameUtils>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>
#include <set>
#include <stdexcept>
#include <vector>

namespace hyxOSG {
namespace {

/// Depths of 0 to 1 as whole greys.
template <class Grey>
osg::ref_ptr<osg::Image> greyImage(osg::Image const& depths, GLenum type) {
    osg::ref_ptr<osg::Image> greys = new osg::Image;
    greys->allocateImage(depths.s(), depths.t(), 1, GL_LUMINANCE, type, 1);
    auto const* const depth = reinterpret_cast<float const*>(depths.data());
    auto* const grey = reinterpret_cast<Grey*>(greys->data());
    for (std::size_t i = 0; i < std::size_t(depths.s()) * std::size_t(depths.t()); ++i) {
        grey[i] = static_cast<Grey>(std::lround(depth[i] * std::numeric_limits<Grey>::max()));
    }
    return greys;
}

/// What the format of the file can hold of depths.
osg::ref_ptr<osg::Image> greysFor(std::string const& file, osg::Image const& depths) {
    return osgDB::getLowerCaseFileExtension(file) == "png" ? greyImage<std::uint16_t>(depths, GL_UNSIGNED_SHORT)
                                                           : greyImage<std::uint8_t>(depths, GL_UNSIGNED_BYTE);
}

} // namespace

struct RenderToImage::Blocks : osg::Referenced {
    Blocks() { living().insert(this); }

    /// How much memory there is from `place` on: what scripts know by its address alone is mostly a target's pixels.
    static std::size_t roomFrom(unsigned char const* place) {
        for (Blocks const* const blocks : living())
            for (auto const& block : blocks->all)
                if (std::less_equal<>()(block.data(), place) && std::less<>()(place, block.data() + block.size()))
                    return std::size_t(block.data() + block.size() - place);
        return std::numeric_limits<std::size_t>::max();
    }

    std::vector<std::vector<unsigned char>> all;

protected:
    ~Blocks() override { living().erase(this); }

private:
    static std::set<Blocks const*>& living() {
        static auto* const all = new std::set<Blocks const*>; // targets may end after the static objects
        return *all;
    }
};

RenderToImage::RenderToImage(hyx::UInt width, hyx::UInt height, BufferComponent bufferComponent, hyx::UInt samples,
                             TextureFormat textureFormat)
    : RenderTarget(width, height, bufferComponent, samples, textureFormat),
      m_blocks(new Blocks),
      m_image(new osg::Image) {
    m_image->setUserData(m_blocks);
    allocatePixels(hyx::Vec2u(width, height));
}

RenderToImage::~RenderToImage() = default;

osg::Image* RenderToImage::getImage() const {
    return m_image.get();
}

bool RenderToImage::extractImageData(unsigned char* buffer, int size) const {
    std::size_t const needed = m_image->getTotalSizeInBytes();
    if (!buffer || size < 0 || std::min(std::size_t(size), Blocks::roomFrom(buffer)) < needed) {
        return false;
    }
    std::memmove(buffer, m_image->data(), needed);
    return true;
}

unsigned char* RenderToImage::getImageData() const {
    return m_image->data();
}

bool RenderToImage::saveImage(hyx::String const& file) const {
    osg::ref_ptr<osg::Image> const image = bufferComponent() == DEPTH_BUFFER ? greysFor(file, *m_image) : m_image;
    try {
        writeImageFile(*image, file);
        return true;
    } catch (std::runtime_error const& failure) {
        warn(failure.what());
        return false;
    }
}

void RenderToImage::allocatePixels(hyx::Vec2u size) {
    osg::Texture2D const& result = *resultTexture();
    GLenum const format = result.getSourceFormat();
    GLenum const type = result.getSourceType();
    std::size_t const needed = osg::Image::computeImageSizeInBytes(int(size.x), int(size.y), 1, format, type);
    auto& blocks = m_blocks->all;
    if (blocks.empty()) {
        blocks.emplace_back(needed);
    } else if (needed > blocks.back().size()) {
        blocks.emplace_back(std::max(needed, 2 * blocks.back().size()));
    }
    m_image->setImage(int(size.x), int(size.y), 1, GLint(format), format, type, blocks.back().data(),
                      osg::Image::NO_DELETE, 1);
}

void RenderToImage::finishFrame(osg::RenderInfo& renderInfo) {
    hyx::Vec2u const size = getSize();
    if (int(size.x) != m_image->s() || int(size.y) != m_image->t()) {
        allocatePixels(size);
    }
    // The image keeps its memory, for it has the size already.
    m_image->readPixels(0, 0, m_image->s(), m_image->t(), m_image->getPixelFormat(), m_image->getDataType(), 1);
    RenderTarget::finishFrame(renderInfo);
}

} // namespace hyxOSG
