// Lays letters out, and fits their glyphs to their size in the picture.
#include "reference/machinery/text/lettering.h"

#include "reference/machinery/text/letters_program.h"
#include "reference/machinery/text/text_length.h"

#include <osgUtil/CullVisitor>

#include <algorithm>
#include <cmath>

namespace hyxOSG {
namespace {

constexpr unsigned int finest = 512; ///< height of an em in pixels
constexpr unsigned int coarsest = 8;
constexpr Grain unhinted{64, false}; ///< lengths in it are true to 1/4096 em

/// Four sizes an octave: letters that come nearer are not made anew in each frame.
unsigned int nextStep(float pixels) {
    auto const height = unsigned(std::ceil(pixels));
    unsigned int octave = coarsest;
    while (2 * octave <= height)
        octave *= 2;
    unsigned int const step = octave / 4;
    return std::clamp((height + step - 1) / step * step, coarsest, finest);
}

osg::Vec2f shadowDirection(osgText::Text::BackdropType type) {
    switch (type) {
    case osgText::Text::DROP_SHADOW_BOTTOM_RIGHT:
        return {1, -1};
    case osgText::Text::DROP_SHADOW_CENTER_RIGHT:
        return {1, 0};
    case osgText::Text::DROP_SHADOW_TOP_RIGHT:
        return {1, 1};
    case osgText::Text::DROP_SHADOW_BOTTOM_CENTER:
        return {0, -1};
    case osgText::Text::DROP_SHADOW_TOP_CENTER:
        return {0, 1};
    case osgText::Text::DROP_SHADOW_BOTTOM_LEFT:
        return {-1, -1};
    case osgText::Text::DROP_SHADOW_CENTER_LEFT:
        return {-1, 0};
    case osgText::Text::DROP_SHADOW_TOP_LEFT:
        return {-1, 1};
    default:
        return {};
    }
}

osg::Vec2f times(osg::Vec2f const& a, osg::Vec2f const& b) {
    return {a.x() * b.x(), a.y() * b.y()};
}

} // namespace

Lettering::Lettering() {
    setDataVariance(osg::Object::DYNAMIC);
    setUseDisplayList(false);
    assignStateSet();
}

Lettering::Lettering(Lettering const& other, osg::CopyOp const& copying)
    : osgText::Text(other, copying), m_written(other.m_written), m_typeface(other.m_typeface), m_grain(other.m_grain) {
    assignStateSet();
    computeGlyphRepresentation();
}

osg::StateSet* Lettering::createStateSet() {
    return lettersState(m_sheet && m_sheet->meeting() == Meeting::SLANTING);
}

void Lettering::write(std::string const& text) {
    osgText::String const letters(requireDrawable(text), osgText::String::ENCODING_UTF8);
    m_written = text;
    if (_text == letters)
        return;
    _text = letters;
    computeGlyphRepresentation();
}

void Lettering::setTypeface(osg::ref_ptr<Typeface> const& typeface) {
    if (typeface == m_typeface)
        return;
    m_typeface = typeface;
    computeGlyphRepresentation();
}

void Lettering::standOnPixels() {
    m_grain = {std::clamp(unsigned(std::lround(getCharacterHeight())), coarsest, finest), true};
    computeGlyphRepresentation();
}

osg::Vec2f Lettering::scale() const {
    return {_characterHeight / getCharacterAspectRatio(), _characterHeight};
}

float Lettering::lineBegin(TextLine const& line) const {
    switch (_alignment) {
    case CENTER_TOP:
    case CENTER_CENTER:
    case CENTER_BOTTOM:
    case CENTER_BASE_LINE:
    case CENTER_BOTTOM_BASE_LINE: {
        float const begin = -line.width / 2;
        return m_grain.hinted ? std::round(begin * float(m_grain.pixels)) / float(m_grain.pixels) : begin;
    }
    case RIGHT_TOP:
    case RIGHT_CENTER:
    case RIGHT_BOTTOM:
    case RIGHT_BASE_LINE:
    case RIGHT_BOTTOM_BASE_LINE:
        return -line.width;
    default:
        return 0;
    }
}

// Sets the lines; their glyphs are drawn when the text is seen.
void Lettering::computeGlyphRepresentation() {
    m_lines.clear();
    clearQuads();
    _textBB.set(0, 0, 0, 0, 0, 0);
    if (!m_grain.pixels)
        m_grain = unhinted;
    if (m_typeface && !_text.empty()) {
        float const widest = _maximumWidth > 0 ? _maximumWidth / scale().x() : std::numeric_limits<float>::infinity();
        m_lines = layOut(std::u32string(_text.begin(), _text.end()), *m_typeface, m_grain, widest);
    }
    _lineCount = unsigned(m_lines.size());
    forEachGlyph([this](PlacedGlyph const& glyph, osg::Vec2f const& line) {
        for (osg::Vec2f const& corner : {glyph.inkLow, glyph.inkHigh}) {
            osg::Vec2f const place = times(line + corner, scale());
            _textBB.expandBy(place.x(), place.y(), 0);
        }
    });
    computePositions();
}

void Lettering::accept(osg::NodeVisitor& visitor) {
    osgUtil::CullVisitor* const view = visitor.asCullVisitor();
    if (view && visitor.validNodeMask(*this) && !m_lines.empty() && !(isCullingActive() && view->isCulled(*this))) {
        fitSheet(*view);
        if (!m_laid)
            layQuads();
    }
    osg::Drawable::accept(visitor);
}

// Where the text comes nearest to the eye.
float Lettering::heightIn(osg::CullStack& view) const {
    float const height = getCharacterHeight();
    if (getCharacterSizeMode() == SCREEN_COORDS)
        return std::min(height, float(finest));
    osg::BoundingBox const& box = getBoundingBox();
    float largest = 0;
    for (unsigned int corner = 0; corner < 8; ++corner) {
        float const size = view.pixelSize(box.corner(corner), height / 2);
        largest = std::max(largest, size > 0 ? size : float(finest)); // behind the eye it is negative
    }
    return std::min(largest, float(finest));
}

// Layers over the scene are measured in pixels.
Meeting Lettering::meetingAt(float pixels) const {
    if (getCharacterSizeMode() == SCREEN_COORDS || std::abs(pixels - getCharacterHeight()) < 1e-3f * pixels)
        return Meeting::ON_PIXELS;
    return getAxisAlignment() == SCREEN ? Meeting::FACING : Meeting::SLANTING;
}

// One sheet serves all cameras that have drawn the text of late.
void Lettering::fitSheet(osgUtil::CullVisitor& view) {
    constexpr unsigned int forgotten = 64; // views
    constexpr float spare = 1.15f;         // filtered letters stay sharp where they are made a little larger than drawn
    float const height = heightIn(view);
    Meeting const meeting = meetingAt(height);
    bool const onPixels = meeting == Meeting::ON_PIXELS;
    unsigned int const wanted = onPixels ? std::max(unsigned(std::lround(height)), coarsest)
                                         : nextStep(meeting == Meeting::FACING ? height : spare * height);
    m_looks[view.getCurrentCamera()] = {wanted, ++m_time};
    std::erase_if(m_looks, [&](auto const& look) { return m_time - look.second.time > forgotten; });
    unsigned int needed = 0;
    for (auto const& [viewer, look] : m_looks)
        needed = std::max(needed, look.resolution);
    // A text that goes away keeps its glyphs for a step or two, lest it flickers between them.
    bool const fits = m_sheet && m_sheet->meeting() == meeting && m_sheet->pixels() >= needed &&
                      m_sheet->pixels() < (onPixels ? needed + 1 : needed * 3 / 2);
    if (!fits) {
        m_sheet = GlyphSheet::share(needed, meeting);
        assignStateSet();
        m_laid = false;
    }
    if (Grain const grain = onPixels ? Grain{needed, true} : unhinted; grain != m_grain) {
        m_grain = grain;
        computeGlyphRepresentation();
    }
}

void Lettering::clearQuads() {
    m_laid = false;
    m_backdrop.clear();
    m_letters.clear();
    _decorationPrimitives.clear();
    _coords->clear();
    _texcoords->clear();
}

void Lettering::layQuads() {
    clearQuads();
    float const em = float(m_sheet->pixels());
    if (_backdropType == OUTLINE) {
        constexpr float reach = 0.7f; // of the offset: as wide as a shadow looks
        layGlyphs(m_backdrop, {}, reach * std::max(_backdropHorizontalOffset, 1 / em));
    } else if (_backdropType != NONE) {
        osg::Vec2f shift = times(shadowDirection(_backdropType), {_backdropHorizontalOffset, _backdropVerticalOffset});
        if (m_grain.hinted)
            shift = osg::Vec2f(std::round(shift.x() * em), std::round(shift.y() * em)) / em;
        layGlyphs(m_backdrop, shift, 0);
    }
    layGlyphs(m_letters, {}, 0);
    setupDecoration();
    _coords->dirty();
    _texcoords->dirty();
    m_laid = true;
}

void Lettering::layGlyphs(Quads& quads, osg::Vec2f const& shift, float stroke) {
    forEachGlyph([&](PlacedGlyph const& glyph, osg::Vec2f const& line) {
        SheetGlyph const& drawn = m_sheet->find(*glyph.face, glyph.index, stroke);
        if (drawn.page)
            addQuad(quads, drawn, line + glyph.origin + shift);
    });
}

void Lettering::addQuad(Quads& quads, SheetGlyph const& glyph, osg::Vec2f const& origin) {
    osg::ref_ptr<osg::DrawElementsUInt>& primitives = quads[glyph.page];
    if (!primitives) {
        primitives = new osg::DrawElementsUInt(GL_TRIANGLES);
        primitives->setBufferObject(_ebo.get());
    }
    osg::Vec2f const low = times(origin + glyph.low, scale()), high = times(origin + glyph.high, scale());
    unsigned int const first = addCoord(osg::Vec2(low.x(), high.y()));
    addCoord(low);
    addCoord(osg::Vec2(high.x(), low.y()));
    addCoord(high);
    addTexCoord(osg::Vec2(glyph.pageLow.x(), glyph.pageHigh.y()));
    addTexCoord(glyph.pageLow);
    addTexCoord(osg::Vec2(glyph.pageHigh.x(), glyph.pageLow.y()));
    addTexCoord(glyph.pageHigh);
    for (unsigned int const corner : {0, 1, 2, 0, 2, 3})
        primitives->push_back(first + corner);
}

void Lettering::accept(osg::PrimitiveFunctor& functor) const {
    std::vector<osg::Vec3> corners;
    forEachGlyph([&](PlacedGlyph const& glyph, osg::Vec2f const& line) {
        osg::Vec2f const low = times(line + glyph.inkLow, scale()), high = times(line + glyph.inkHigh, scale());
        for (osg::Vec2f const& corner : {low, osg::Vec2f(high.x(), low.y()), high, osg::Vec2f(low.x(), high.y())})
            corners.push_back(osg::Vec3(corner, 0) * _matrix);
    });
    if (corners.empty())
        return;
    functor.setVertexArray(unsigned(corners.size()), corners.data());
    functor.drawArrays(GL_QUADS, 0, GLsizei(corners.size()));
}

void Lettering::releaseGLObjects(osg::State* state) const {
    osgText::Text::releaseGLObjects(state);
    for (Quads const* const quads : {&m_backdrop, &m_letters})
        for (auto const& [page, primitives] : *quads) {
            page->releaseGLObjects(state);
            primitives->releaseGLObjects(state);
        }
}

} // namespace hyxOSG
