// Lays glyphs on textures.
#include "reference/machinery/text/glyph_sheet.h"

#include <algorithm>
#include <cmath>

namespace hyxOSG {
namespace {

/// Never destroyed: texts that live until the process ends give their sheets back after all else.
std::map<std::pair<unsigned int, Meeting>, GlyphSheet*>& sheets() {
    static auto* const shared = new std::map<std::pair<unsigned int, Meeting>, GlyphSheet*>;
    return *shared;
}

/// Glyphs begin at multiples of this, so that they look alike in the coarser levels wherever they are.
int wholeBlocks(int texels) {
    constexpr int block = 4;
    return (texels + block - 1) / block * block;
}

} // namespace

osg::ref_ptr<GlyphSheet> GlyphSheet::share(unsigned int pixels, Meeting meeting) {
    GlyphSheet*& sheet = sheets()[{pixels, meeting}];
    return sheet ? sheet : sheet = new GlyphSheet(pixels, meeting);
}

GlyphSheet::GlyphSheet(unsigned int pixels, Meeting meeting)
    : m_grain{pixels, meeting == Meeting::ON_PIXELS},
      m_meeting(meeting),
      m_margin(meeting == Meeting::ON_PIXELS ? 1 : std::clamp(int(pixels) / 8, 2, 8)) {}

GlyphSheet::~GlyphSheet() {
    sheets().erase({m_grain.pixels, m_meeting});
}

void GlyphSheet::releaseAll(osg::State* state) {
    for (auto const& [size, sheet] : sheets())
        for (Page const& page : sheet->m_pages)
            page.texture->releaseGLObjects(state);
}

SheetGlyph const& GlyphSheet::find(Face& face, unsigned int glyph, float stroke) {
    auto const [place, isNew] = m_glyphs.try_emplace({&face, glyph, stroke});
    if (isNew)
        place->second = lay(face.draw(glyph, m_grain, stroke));
    return place->second;
}

SheetGlyph GlyphSheet::lay(GlyphPicture const& picture) {
    if (picture.coverage.empty())
        return {};
    int const width = wholeBlocks(int(picture.width) + 2 * m_margin);
    int const height = wholeBlocks(int(picture.height) + 2 * m_margin);
    Page& page = pageWithRoom(width, height);
    osg::Image& image = *page.texture->getImage();
    for (unsigned int row = 0; row < picture.height; ++row)
        std::copy_n(picture.coverage.begin() + std::ptrdiff_t(row) * picture.width, picture.width,
                    image.data(unsigned(page.usedWidth + m_margin), unsigned(page.rowBottom + m_margin) + row));
    image.dirty();
    // Half of the margin is drawn: there the edge's last traces are.
    float const drawn = std::ceil(float(m_margin) / 2), left = float(m_margin) - drawn, scale = float(picture.pixels);
    osg::Vec2f const size(float(picture.width) + 2 * drawn, float(picture.height) + 2 * drawn);
    osg::Vec2f const low(float(picture.left) - drawn, float(picture.bottom) - drawn);
    osg::Vec2f const pageLow(float(page.usedWidth) + left, float(page.rowBottom) + left), pageHigh = pageLow + size;
    float const s = 1.0f / float(image.s()), t = 1.0f / float(image.t());
    page.usedWidth += width;
    return {page.texture,
            low / scale,
            (low + size) / scale,
            {pageLow.x() * s, pageLow.y() * t},
            {pageHigh.x() * s, pageHigh.y() * t}};
}

bool GlyphSheet::Page::makeRoom(int width, int height) {
    osg::Image const& image = *texture->getImage();
    if (usedWidth + width > image.s()) {
        usedWidth = 0;
        rowBottom = rowTop;
    }
    if (width > image.s() || rowBottom + height > image.t())
        return false;
    rowTop = std::max(rowTop, rowBottom + height);
    return true;
}

GlyphSheet::Page& GlyphSheet::pageWithRoom(int width, int height) {
    constexpr int coarsest = 128, finest = 1024;
    if (m_pages.empty() || !m_pages.back().makeRoom(width, height)) {
        int side = coarsest;
        while (side < finest && side < 8 * int(m_grain.pixels))
            side *= 2;
        m_pages.push_back({makeTexture(std::max(side, width), std::max(side, height))});
        m_pages.back().makeRoom(width, height);
    }
    return m_pages.back();
}

osg::ref_ptr<osg::Texture2D> GlyphSheet::makeTexture(int width, int height) const {
    osg::ref_ptr<osg::Image> const image = new osg::Image;
    image->allocateImage(width, height, 1, GL_ALPHA, GL_UNSIGNED_BYTE);
    image->setInternalTextureFormat(GL_ALPHA);
    std::fill_n(image->data(), image->getTotalSizeInBytes(), 0);
    osg::ref_ptr<osg::Texture2D> texture = new osg::Texture2D(image);
    texture->setResizeNonPowerOfTwoHint(false);
    texture->setWrap(osg::Texture::WRAP_S, osg::Texture::CLAMP_TO_EDGE);
    texture->setWrap(osg::Texture::WRAP_T, osg::Texture::CLAMP_TO_EDGE);
    bool const onPixels = m_meeting == Meeting::ON_PIXELS;
    texture->setFilter(osg::Texture::MAG_FILTER, osg::Texture::LINEAR);
    texture->setFilter(osg::Texture::MIN_FILTER, onPixels ? osg::Texture::LINEAR : osg::Texture::LINEAR_MIPMAP_LINEAR);
    return texture;
}

} // namespace hyxOSG
