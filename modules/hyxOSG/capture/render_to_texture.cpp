// Off-screen cameras whose result is a texture.
#include "platform/hyxOSG/capture/render_to_texture.h"

#include "binding/vocabulary/rows.h"
#include "platform/hyxOSG/nodes/texture2d.h"

namespace {

constexpr Declared render_to_texture_rows[] = {
    FUNCTION(new_RenderToTexture, NEW(hyxOSG::RenderToTexture,
                                      (hyx::UInt, hyx::UInt, hyxOSG::RenderTarget::BufferComponent, hyx::UInt,
                                       hyxOSG::RenderTarget::TextureFormat),
                                      hyxOSG::RenderTarget::COLOR_BUFFER, 0, hyxOSG::RenderTarget::RGBA)),
    FUNCTION(RenderToTexture_getTexture, METHOD(hyxOSG::RenderToTexture, getTexture, () const)),
    REGISTER(hyxOSG::RenderToTexture, RenderToTexture),
    INIT(RenderToTexture),
};

} // namespace

ROWS(render_to_texture_rows);
