// One read of the frame buffer, one copy that turns it over.
#include "reference/hyxOSG/application/picture_reader.h"

#include "reference/machinery/context/resolved_frame.h"

#include <osg/GL>
#include <osg/Viewport>

#include <cstdint>
#include <cstring>

namespace hyxOSG {
namespace {

/// Four bytes are written and the next three lie over the last of them, which the compiler makes one store a pixel;
/// the last pixel of the row must not reach beyond it.
void packRow(unsigned char const* from, std::size_t width, unsigned char* to) {
    for (std::size_t x = 0; x + 1 < width; ++x)
        std::memcpy(to + 3 * x, from + 4 * x, 4);
    std::memcpy(to + 3 * (width - 1), from + 4 * (width - 1), 3);
}

} // namespace

void PictureReader::read(osg::Viewport const& viewport, osg::State& state, unsigned char* rgb) {
    auto const width = static_cast<std::size_t>(viewport.width());
    auto const height = static_cast<std::size_t>(viewport.height());
    m_pixels.resize(4 * width * height);
    ResolvedFrame const frame(state, int(viewport.x() + viewport.width()), int(viewport.y() + viewport.height()));
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    glPixelStorei(GL_PACK_ROW_LENGTH, 0);
    // Four bytes a pixel are read in half the time of three.
    glReadPixels(GLint(viewport.x()), GLint(viewport.y()), GLsizei(width), GLsizei(height), GL_RGBA, GL_UNSIGNED_BYTE,
                 m_pixels.data());
    for (std::size_t row = 0; row < height; ++row)
        packRow(m_pixels.data() + 4 * width * (height - 1 - row), width, rgb + 3 * width * row);
}

} // namespace hyxOSG
