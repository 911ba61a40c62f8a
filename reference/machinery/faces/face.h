// One face of a font file: which letters it has, and the pictures of its glyphs.
#pragma once

#include <hb.h>
#include <osg/Referenced>
#include <osg/ref_ptr>

#include <memory>
#include <string>
#include <vector>

struct FT_FaceRec_;

namespace hyxOSG {

/// How glyphs are drawn.
struct Grain {
    unsigned int pixels = 0; ///< of an em
    bool hinted = false;     ///< with outlines and widths bent to whole pixels

    auto operator<=>(Grain const&) const = default;
};

/// How far a glyph covers each pixel, 0 to 255, the lowest row first.
struct GlyphPicture {
    int left = 0, bottom = 0; ///< of the lower left corner, pixels from the glyph's origin
    unsigned int width = 0, height = 0;
    unsigned int pixels = 0; ///< of an em: fewer than wanted where a glyph is very wide
    std::vector<unsigned char> coverage;
};

/// A face that has outlines. Faces are used by one thread at a time.
class Face : public osg::Referenced {
public:
    /// Null where the file has no such face. `index` counts the faces of a file; its upper 16 bits those of a variable
    /// font.
    static osg::ref_ptr<Face> open(std::string const& file, int index = 0);

    std::string const& file() const { return m_file; }

    bool has(unsigned int letter) const;

    /// The face for shaping: positions are in 64ths of a pixel. Valid until the next call.
    hb_font_t* sized(Grain const& grain);

    /// The picture of a glyph, or of a line of `stroke` ems to both sides of its outline.
    GlyphPicture draw(unsigned int glyph, Grain const& grain, float stroke);

private:
    struct Close {
        void operator()(FT_FaceRec_* face) const;

        void operator()(hb_font_t* font) const { hb_font_destroy(font); }
    };

    Face(std::string file, std::string bytes);
    ~Face() override;

    GlyphPicture drawIn(unsigned int glyph, Grain const& grain, float stroke);

    std::string m_file;
    std::string m_bytes; ///< a copy: of a mapped file that becomes shorter nothing could be read
    std::unique_ptr<FT_FaceRec_, Close> m_face;
    std::unique_ptr<hb_font_t, Close> m_font;
    Grain m_grain;
};

} // namespace hyxOSG
