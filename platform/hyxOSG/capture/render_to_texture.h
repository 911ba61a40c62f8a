// Off-screen pictures that stay on the graphics card.
#pragma once

#include "platform/hyx/objects/ref_ptr.h"
#include "platform/hyxOSG/capture/render_target.h"

namespace hyxOSG {

class Texture2D;

/// A render target whose result is a texture that other nodes can show.
class RenderToTexture : public RenderTarget {
public:
    /// \param width in pixels, 1 to 16384.
    /// \param height likewise.
    /// \param bufferComponent what the texture holds, colour or depth.
    /// \param samples samples a pixel for smooth edges; 0 or 1 means none. Refused above 16.
    /// \param textureFormat the pixels of a colour texture, `RGBA` or `RGB`; a depth texture is always
    /// `DEPTH_COMPONENT`. Throws `std::invalid_argument` for what is out of range or does not go together.
    RenderToTexture(hyx::UInt width, hyx::UInt height, BufferComponent bufferComponent = COLOR_BUFFER,
                    hyx::UInt samples = 0, TextureFormat textureFormat = RGBA);

    /// The texture with the last drawn frame; owned by the target.
    Texture2D* getTexture() const;

protected:
    ~RenderToTexture() override;

private:
    hyx::ref_ptr<Texture2D> m_texture;
};

} // namespace hyxOSG
