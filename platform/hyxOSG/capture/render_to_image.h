// Off-screen pictures as pixels in memory.
#pragma once

#include "platform/hyx/values/string.h"
#include "platform/hyxOSG/capture/render_target.h"

#include <osg/Image>

#include <vector>

namespace hyxOSG {

/// A render target whose pixels are read back into memory after each draw.
///
/// Rows are stored from the lower to the upper one, without padding. Colour is one byte a channel (RGBA or RGB); depth
/// is one float a pixel, 0 at the near and 1 at the far plane.
class RenderToImage : public RenderTarget {
public:
    /// \param width in pixels, 1 to 16384.
    /// \param height likewise.
    /// \param bufferComponent what the image holds, colour or depth.
    /// \param samples samples a pixel for smooth edges; 0 or 1 means none. Refused above 16.
    /// \param textureFormat the pixels of a colour image, `RGBA` or `RGB`; a depth image is always `DEPTH_COMPONENT`.
    /// Throws `std::invalid_argument` for what is out of range or does not go together.
    RenderToImage(hyx::UInt width, hyx::UInt height, BufferComponent bufferComponent = COLOR_BUFFER,
                  hyx::UInt samples = 0, TextureFormat textureFormat = RGBA);

    /// The image with the last drawn frame; owned by the target, black before the first.
    osg::Image* getImage() const;

    /// Copies the pixels into a buffer.
    /// \param buffer where to; null gives false.
    /// \param size its size in bytes; false when it is less than the image needs, or when the buffer is a target's
    /// pixels and these have less; nothing is copied then.
    bool extractImageData(unsigned char* buffer, int size) const;
    /// The pixels themselves; owned by the target. The memory lives as long as the target and its image; after a change
    /// of the size a larger image may lie elsewhere from the next frame on.
    unsigned char* getImageData() const;

    /// Writes the image to a file whose extension chooses the format, without its alpha where that has none; false when
    /// that fails (the reason is notified). A depth image is written as greys, near black and far white: of 16 bits in
    /// a ".png", else of 8.
    bool saveImage(hyx::String const& file) const;

protected:
    ~RenderToImage() override;
    void finishFrame(osg::RenderInfo& renderInfo) override;

private:
    void allocatePixels(hyx::Vec2u size);

    /// The last block holds the pixels. Earlier, smaller ones are kept for those who still look at them; each is at
    /// least double its predecessor, so that together they are no larger than the last. The image holds them, too, for
    /// it may outlive the target.
    struct Blocks;

    osg::ref_ptr<Blocks> m_blocks;
    osg::ref_ptr<osg::Image> m_image;
};

} // namespace hyxOSG
