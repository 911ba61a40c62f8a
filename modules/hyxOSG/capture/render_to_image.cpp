// Off-screen cameras whose pixels are read back.
#include "platform/hyxOSG/capture/render_to_image.h"

#include "binding/vocabulary/rows.h"

namespace {

constexpr Declared render_to_image_rows[] = {
    FUNCTION(new_RenderToImage, NEW(hyxOSG::RenderToImage,
                                    (hyx::UInt, hyx::UInt, hyxOSG::RenderTarget::BufferComponent, hyx::UInt,
                                     hyxOSG::RenderTarget::TextureFormat),
                                    hyxOSG::RenderTarget::COLOR_BUFFER, 0, hyxOSG::RenderTarget::RGBA)),
    FUNCTION(RenderToImage_getImage, METHOD(hyxOSG::RenderToImage, getImage, () const)),
    FUNCTION(RenderToImage_extractImageData,
             METHOD(hyxOSG::RenderToImage, extractImageData, (unsigned char*, int) const)),
    FUNCTION(RenderToImage_getImageData, METHOD(hyxOSG::RenderToImage, getImageData, () const)),
    FUNCTION(RenderToImage_saveImage, METHOD(hyxOSG::RenderToImage, saveImage, (hyx::String const&) const)),
    REGISTER(hyxOSG::RenderToImage, RenderToImage),
    INIT(RenderToImage),
};

} // namespace

ROWS(render_to_image_rows);
