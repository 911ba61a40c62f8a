// A target whose result is shown by other nodes.

#include "platform/hyxOSG/capture/render_to_texture.h"

#include "platform/hyxOSG/nodes/texture2d.h"

namespace hyxOSG {

RenderToTexture::RenderToTexture(hyx::UInt width, hyx::UInt height, BufferComponent bufferComponent, hyx::UInt samples,
                                 TextureFormat textureFormat)
    : RenderTarget(width, height, bufferComponent, samples, textureFormat), m_texture(new Texture2D(resultTexture())) {}

RenderToTexture::~RenderToTexture() = default;

Texture2D* RenderToTexture::getTexture() const {
    return m_texture.get();
}

} // namespace hyxOSG
