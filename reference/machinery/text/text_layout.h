// Where the glyphs of a text stand.
#pragma once

#include "reference/machinery/text/typeface.h"

#include <osg/Vec2f>

#include <limits>
#include <string>
#include <vector>

namespace hyxOSG {

struct PlacedGlyph {
    Face* face = nullptr;
    unsigned int index = 0;
    osg::Vec2f origin;          ///< on the base line, from the line's beginning; em, as all lengths here
    osg::Vec2f inkLow, inkHigh; ///< corners of what is drawn, from the line's beginning
};

struct TextLine {
    std::vector<PlacedGlyph> glyphs;
    float width = 0;
};

/// Sets a text in lines, which break at "\n", and between words where they would be wider than `widest`. Letters are
/// ordered, joined, stacked and spaced as their scripts and fonts ask.
std::vector<TextLine> layOut(std::u32string const& text, Typeface& typeface, Grain const& grain,
                             float widest = std::numeric_limits<float>::infinity());

} // namespace hyxOSG
