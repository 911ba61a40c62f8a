// Reads faces and draws glyphs with FreeType.
#include "reference/machinery/faces/face.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_GLYPH_H
#include FT_STROKER_H

#include <hb-ft.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>

namespace hyxOSG {
namespace {

constexpr float fixed = 64; // FreeType's parts of a pixel

/// Never closed: faces live as long as the process.
FT_Library library() {
    static FT_Library const opened = [] {
        FT_Library made = nullptr;
        FT_Init_FreeType(&made);
        return made;
    }();
    return opened;
}

FT_Int32 loadFlags(bool hinted) {
    return FT_LOAD_NO_BITMAP | (hinted ? FT_LOAD_DEFAULT : FT_LOAD_NO_HINTING);
}

struct Done {
    void operator()(FT_Glyph glyph) const { FT_Done_Glyph(glyph); }

    void operator()(FT_Stroker stroker) const { FT_Stroker_Done(stroker); }
};

using OwnGlyph = std::unique_ptr<std::remove_pointer_t<FT_Glyph>, Done>;
using OwnStroker = std::unique_ptr<std::remove_pointer_t<FT_Stroker>, Done>;

/// Runs a function that puts another glyph in the place of one.
template <class Change>
bool replace(OwnGlyph& glyph, Change const& change) {
    FT_Glyph changed = glyph.release();
    bool const fine = !change(&changed);
    glyph.reset(changed);
    return fine;
}

bool stroke(OwnGlyph& glyph, float radius) {
    FT_Stroker made = nullptr;
    if (FT_Stroker_New(library(), &made))
        return false;
    OwnStroker const stroker(made);
    FT_Stroker_Set(made, FT_Fixed(std::lround(radius * fixed)), FT_STROKER_LINECAP_ROUND, FT_STROKER_LINEJOIN_ROUND, 0);
    return replace(glyph, [&](FT_Glyph* one) { return FT_Glyph_Stroke(one, made, true); });
}

GlyphPicture toPicture(FT_BitmapGlyph drawn) {
    FT_Bitmap const& bitmap = drawn->bitmap;
    GlyphPicture picture{drawn->left, drawn->top - int(bitmap.rows), bitmap.width, bitmap.rows, 0, {}};
    if (bitmap.pixel_mode != FT_PIXEL_MODE_GRAY)
        return {};
    picture.coverage.reserve(std::size_t(bitmap.width) * bitmap.rows);
    for (unsigned int row = bitmap.rows; row-- > 0;) {
        unsigned char const* const first = bitmap.buffer + std::ptrdiff_t(row) * bitmap.pitch;
        picture.coverage.insert(picture.coverage.end(), first, first + bitmap.width);
    }
    return picture;
}

} // namespace

void Face::Close::operator()(FT_FaceRec_* face) const {
    FT_Done_Face(face);
}

Face::Face(std::string file, std::string bytes) : m_file(std::move(file)), m_bytes(std::move(bytes)) {}

Face::~Face() = default;

osg::ref_ptr<Face> Face::open(std::string const& file, int index) {
    std::ifstream stream(file, std::ios::binary);
    osg::ref_ptr<Face> const opened = new Face(file, {std::istreambuf_iterator<char>(stream), {}});
    FT_Face face = nullptr;
    if (FT_New_Memory_Face(library(), reinterpret_cast<FT_Byte const*>(opened->m_bytes.data()),
                           FT_Long(opened->m_bytes.size()), index, &face))
        return nullptr;
    opened->m_face.reset(face);
    opened->m_font.reset(hb_ft_font_create_referenced(face));
    return FT_IS_SCALABLE(face) ? opened : nullptr;
}

bool Face::has(unsigned int letter) const {
    hb_codepoint_t glyph = 0;
    return hb_font_get_nominal_glyph(m_font.get(), letter, &glyph);
}

hb_font_t* Face::sized(Grain const& grain) {
    if (grain != m_grain) {
        FT_Set_Pixel_Sizes(m_face.get(), grain.pixels, grain.pixels);
        hb_ft_font_set_load_flags(m_font.get(), loadFlags(grain.hinted));
        hb_ft_font_changed(m_font.get());
        m_grain = grain;
    }
    return m_font.get();
}

GlyphPicture Face::draw(unsigned int glyph, Grain const& grain, float stroke) {
    constexpr unsigned int widest = 2048; // pixels: some ligatures are sentences
    Grain coarser = grain;
    for (;; coarser.pixels /= 2) {
        GlyphPicture const picture = drawIn(glyph, coarser, stroke);
        if (std::max(picture.width, picture.height) <= widest || coarser.pixels < 2)
            return picture;
    }
}

GlyphPicture Face::drawIn(unsigned int index, Grain const& grain, float radius) {
    sized(grain);
    FT_Glyph loaded = nullptr;
    if (FT_Load_Glyph(m_face.get(), index, loadFlags(grain.hinted)) || FT_Get_Glyph(m_face->glyph, &loaded))
        return {};
    OwnGlyph glyph(loaded);
    if (radius > 0 && !stroke(glyph, radius * float(grain.pixels)))
        return {};
    if (!replace(glyph, [](FT_Glyph* one) { return FT_Glyph_To_Bitmap(one, FT_RENDER_MODE_NORMAL, nullptr, true); }))
        return {};
    GlyphPicture picture = toPicture(reinterpret_cast<FT_BitmapGlyph>(glyph.get()));
    picture.pixels = grain.pixels;
    return picture;
}

} // namespace hyxOSG
