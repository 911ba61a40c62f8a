// Pictures of glyphs in textures, shared by the texts that show them in one size.
#pragma once

#include "reference/machinery/faces/face.h"

#include <osg/Texture2D>
#include <osg/Vec2f>

#include <map>
#include <vector>

namespace hyxOSG {

/// How glyphs meet the pixels of the picture.
enum class Meeting {
    ON_PIXELS, ///< each on whole ones
    FACING,    ///< anywhere, upright to the eye
    SLANTING   ///< at any angle
};

/// Where a glyph's picture is. The rectangle reaches a little over the ink.
struct SheetGlyph {
    osg::Texture2D* page = nullptr; ///< null for glyphs without ink
    osg::Vec2f low, high;           ///< corners from the glyph's origin, em
    osg::Vec2f pageLow, pageHigh;   ///< the same in the texture
};

/// The glyphs of all faces in one size. Sheets are gone with the last text that shows them.
class GlyphSheet : public osg::Referenced {
public:
    /// The one sheet of a size. Glyphs that are on pixels are hinted.
    static osg::ref_ptr<GlyphSheet> share(unsigned int pixels, Meeting meeting);

    unsigned int pixels() const { return m_grain.pixels; }

    Meeting meeting() const { return m_meeting; }

    /// A glyph, or a line of `stroke` ems to both sides of its outline. Valid as long as the sheet.
    SheetGlyph const& find(Face& face, unsigned int glyph, float stroke = 0);

    /// Gives back what all sheets hold in a context that ends, or in all contexts.
    static void releaseAll(osg::State* state);

private:
    struct Page {
        osg::ref_ptr<osg::Texture2D> texture;
        int usedWidth = 0, rowBottom = 0, rowTop = 0; ///< glyphs are laid in rows

        bool makeRoom(int width, int height);
    };

    struct Key {
        Face const* face;
        unsigned int glyph;
        float stroke;

        auto operator<=>(Key const&) const = default;
    };

    GlyphSheet(unsigned int pixels, Meeting meeting);
    ~GlyphSheet() override;

    SheetGlyph lay(GlyphPicture const& picture);
    Page& pageWithRoom(int width, int height);
    osg::ref_ptr<osg::Texture2D> makeTexture(int width, int height) const;

    Grain m_grain;
    Meeting m_meeting;
    int m_margin; ///< round each glyph, for coarser levels of the texture
    std::vector<Page> m_pages;
    std::map<Key, SheetGlyph> m_glyphs;
};

} // namespace hyxOSG
