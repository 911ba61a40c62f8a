// One read of the frame buffer, one copy that turns it over.
#include "reference/hyxOSG/application/picture_reader.h"

#include "reference/machinery/context/resolved_frame.h"

#include <osg/GL>
#include <osg/Viewport>

#include <cstddef>
#include <cstring>

namespace hyxOSG {
namespace {

using FourPixels = unsigned char __attribute__((vector_size(16)));

/// Four pixels as twelve bytes in the order red, green, blue; the last four are of no account.
template <bool beginsWithBlue>
FourPixels packed(FourPixels p) {
    if constexpr (beginsWithBlue)
        return __builtin_shufflevector(p, p, 2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, 3, 7, 11, 15);
    else
        return __builtin_shufflevector(p, p, 0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, 3, 7, 11, 15);
}

template <bool beginsWithBlue>
[[gnu::always_inline]] inline void packRow(unsigned char const* from, std::size_t width, unsigned char* to) {
    std::size_t x = 0;
    for (; x + 6 <= width; x += 4) { // sixteen bytes are written, which must not reach beyond the row
        FourPixels pixels;
        std::memcpy(&pixels, from + 4 * x, 16);
        pixels = packed<beginsWithBlue>(pixels);
        std::memcpy(to + 3 * x, &pixels, 16);
    }
    for (; x < width; ++x)
        for (std::size_t color = 0; color < 3; ++color)
            to[3 * x + color] = from[4 * x + (beginsWithBlue ? 2 - color : color)];
}

#ifdef __x86_64__
[[gnu::target_clones("ssse3", "default")]] // the first that can move bytes within a register
#endif
void packRow(unsigned char const* from, std::size_t width, unsigned char* to, bool beginsWithBlue) {
    if (beginsWithBlue)
        packRow<true>(from, width, to);
    else
        packRow<false>(from, width, to);
}

} // namespace

void PictureReader::read(osg::Viewport const& viewport, osg::State& state, unsigned char* rgb) {
    auto const width = static_cast<std::size_t>(viewport.width());
    auto const height = static_cast<std::size_t>(viewport.height());
    m_pixels.resize(4 * width * height);
    ResolvedFrame const frame(state, int(viewport.x() + viewport.width()), int(viewport.y() + viewport.height()));
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    glPixelStorei(GL_PACK_ROW_LENGTH, 0);
    // As it lies in memory, four bytes a pixel: all else takes twice as long. Windows begin with blue.
    bool const beginsWithBlue = !frame.isCopy();
    glReadPixels(GLint(viewport.x()), GLint(viewport.y()), GLsizei(width), GLsizei(height),
                 beginsWithBlue ? GL_BGRA : GL_RGBA, GL_UNSIGNED_BYTE, m_pixels.data());
    for (std::size_t row = 0; row < height; ++row)
        packRow(m_pixels.data() + 4 * width * (height - 1 - row), width, rgb + 3 * width * row, beginsWithBlue);
}

} // namespace hyxOSG
