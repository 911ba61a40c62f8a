// Shapes runs with HarfBuzz.
#include "reference/machinery/text/text_layout.h"

#include "reference/machinery/text/text_runs.h"

#include <algorithm>
#include <cmath>

namespace hyxOSG {
namespace {

struct Destroy {
    void operator()(hb_buffer_t* buffer) const { hb_buffer_destroy(buffer); }
};

/// Glyphs of one run, from left to right.
class ShapedRun {
public:
    ShapedRun(std::u32string_view line, TextRun const& run, Grain const& grain)
        : m_run(run), m_grain(grain), m_font(run.face->sized(grain)), m_buffer(hb_buffer_create()) {
        hb_buffer_t* const buffer = m_buffer.get();
        hb_buffer_add_utf32(buffer, reinterpret_cast<uint32_t const*>(line.data()), int(line.size()),
                            unsigned(run.begin), int(run.end - run.begin));
        hb_buffer_set_direction(buffer, run.level % 2 ? HB_DIRECTION_RTL : HB_DIRECTION_LTR);
        hb_buffer_set_script(buffer, run.script);
        hb_buffer_set_language(buffer, hb_language_get_default());
        hb_shape(m_font, buffer, nullptr, 0);
        m_infos = hb_buffer_get_glyph_infos(buffer, &m_length);
        m_places = hb_buffer_get_glyph_positions(buffer, &m_length);
    }

    void appendTo(TextLine& line) const {
        for (unsigned int i = 0; i < m_length; ++i) {
            line.glyphs.push_back(place(i, line.width));
            line.width += advance(i);
        }
    }

    /// Adds what each letter takes to its place among the line's.
    void addWidths(std::vector<float>& widths) const {
        for (unsigned int i = 0; i < m_length; ++i)
            widths[m_infos[i].cluster] += advance(i);
    }

private:
    float ems(float parts) const { return parts / (64 * float(m_grain.pixels)); }

    // Hinted glyphs stand on whole pixels.
    float onGrain(float place) const {
        float const pixels = float(m_grain.pixels);
        return m_grain.hinted ? std::round(place * pixels) / pixels : place;
    }

    float advance(unsigned int i) const { return ems(float(m_places[i].x_advance)); }

    PlacedGlyph place(unsigned int i, float pen) const {
        PlacedGlyph glyph{m_run.face, m_infos[i].codepoint, {}, {}, {}};
        glyph.origin =
            osg::Vec2f(onGrain(pen + ems(float(m_places[i].x_offset))), onGrain(ems(float(m_places[i].y_offset))));
        hb_glyph_extents_t ink{};
        hb_font_get_glyph_extents(m_font, glyph.index, &ink);
        glyph.inkLow = glyph.origin + osg::Vec2f(ems(float(ink.x_bearing)), ems(float(ink.y_bearing + ink.height)));
        glyph.inkHigh = glyph.inkLow + osg::Vec2f(ems(float(ink.width)), ems(float(-ink.height)));
        return glyph;
    }

    TextRun const& m_run;
    Grain const& m_grain;
    hb_font_t* m_font;
    std::unique_ptr<hb_buffer_t, Destroy> m_buffer;
    hb_glyph_info_t* m_infos = nullptr;
    hb_glyph_position_t* m_places = nullptr;
    unsigned int m_length = 0;
};

TextLine setLine(std::u32string_view line, std::span<int const> levels, Typeface& typeface, Grain const& grain) {
    std::vector<TextRun> runs = runsOf(line, levels, typeface);
    orderVisually(runs);
    TextLine set;
    for (TextRun const& run : runs)
        ShapedRun(line, run, grain).appendTo(set);
    return set;
}

/// A line may end after spaces and hyphens, and round letters that are words.
bool mayBreakBefore(std::u32string_view text, std::size_t place) {
    auto const isWord = [](unsigned int letter) {
        hb_script_t const script = hb_unicode_script(hb_unicode_funcs_get_default(), letter);
        return script == HB_SCRIPT_HAN || script == HB_SCRIPT_HIRAGANA || script == HB_SCRIPT_KATAKANA;
    };
    auto const former = text[place - 1], letter = text[place];
    return letter != ' ' && (former == ' ' || former == '-' || isWord(former) || isWord(letter));
}

/// How many letters of a paragraph that begins at `begin` fit into a line; at least one. Spaces at its end may stand
/// out.
std::size_t fittingLetters(std::u32string_view paragraph, std::span<float const> widths, float widest) {
    float width = 0;
    std::size_t fitting = 0;
    for (std::size_t place = 0; place < paragraph.size(); ++place) {
        if (place && mayBreakBefore(paragraph, place))
            fitting = place;
        width += widths[place];
        if (width > widest && paragraph[place] != ' ')
            return fitting ? fitting : std::max(place, std::size_t(1));
    }
    return paragraph.size();
}

std::u32string_view withoutSpacesAtEnd(std::u32string_view line) {
    return line.substr(0, line.find_last_not_of(U' ') + 1);
}

void appendParagraph(std::vector<TextLine>& lines, std::u32string_view paragraph, Typeface& typeface,
                     Grain const& grain, float widest) {
    std::vector<int> const levels = embeddingLevels(paragraph);
    TextLine whole = setLine(paragraph, levels, typeface, grain);
    if (whole.width <= widest) {
        lines.push_back(std::move(whole));
        return;
    }
    std::vector<float> widths(paragraph.size());
    for (TextRun const& run : runsOf(paragraph, levels, typeface))
        ShapedRun(paragraph, run, grain).addWidths(widths);
    for (std::size_t begin = 0; begin < paragraph.size();) {
        std::size_t const length = fittingLetters(paragraph.substr(begin), std::span(widths).subspan(begin), widest);
        std::u32string_view const line = withoutSpacesAtEnd(paragraph.substr(begin, length));
        lines.push_back(setLine(line, std::span(levels).subspan(begin, line.size()), typeface, grain));
        begin += length;
    }
}

/// What is set instead of characters that move the pen of a typewriter.
std::u32string withoutControls(std::u32string const& text) {
    std::u32string clean;
    for (char32_t const letter : text)
        if (letter == U'\t')
            clean += U"    ";
        else if (letter != U'\r')
            clean += letter;
    return clean;
}

} // namespace

std::vector<TextLine> layOut(std::u32string const& text, Typeface& typeface, Grain const& grain, float widest) {
    std::u32string const clean = withoutControls(text);
    std::vector<TextLine> lines;
    for (std::size_t begin = 0; begin <= clean.size();) {
        std::size_t const end = std::min(clean.find(U'\n', begin), clean.size());
        appendParagraph(lines, std::u32string_view(clean).substr(begin, end - begin), typeface, grain, widest);
        begin = end + 1;
    }
    return lines;
}

} // namespace hyxOSG
