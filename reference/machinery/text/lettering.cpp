// Writes texts, and fits their glyphs to their size in the picture.
#include "reference/machinery/text/lettering.h"

#include "reference/machinery/text/drawn_text.h"
#include "reference/machinery/text/fallback_font.h"

#include <osgUtil/CullVisitor>

#include <algorithm>
#include <cmath>

namespace hyxOSG {
namespace {

constexpr unsigned int finest = 512; ///< height of a glyph in pixels; two fit in the width of the fonts' textures
constexpr unsigned int coarsest = 8;

/// Four sizes an octave: letters that come nearer are not made anew in each frame.
unsigned int nextStep(float pixels) {
    auto const height = unsigned(std::ceil(pixels));
    unsigned int octave = coarsest;
    while (2 * octave <= height)
        octave *= 2;
    unsigned int const step = octave / 4;
    return std::clamp((height + step - 1) / step * step, coarsest, finest);
}

} // namespace

Lettering::Lettering() {
    setDataVariance(osg::Object::DYNAMIC);
    setUseDisplayList(false);
}

Lettering::Lettering(Lettering const& other, osg::CopyOp const& copying)
    : osgText::Text(other, copying), m_written(other.m_written) {}

void Lettering::write(std::string const& text) {
    osgText::String const drawn = drawnText(text);
    m_written = text;
    setText(drawn);
}

void Lettering::accept(osg::NodeVisitor& visitor) {
    osgUtil::CullVisitor* const view = visitor.asCullVisitor();
    if (view && visitor.validNodeMask(*this) && !getText().empty() && !(isCullingActive() && view->isCulled(*this)))
        fitResolution(*view, view->getCurrentCamera());
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

// Texts that face the eye need no filter for slanting ones. Layers over the scene are measured in pixels, and letters
// on them stand on whole ones.
unsigned int Lettering::resolutionIn(osg::CullStack& view) {
    constexpr float spare =
        1.15f; // filtered letters stay sharp where they are made a little larger than they are drawn
    float const pixels = heightIn(view);
    bool const onPixels =
        getCharacterSizeMode() == SCREEN_COORDS || std::abs(pixels - getCharacterHeight()) < 1e-3f * pixels;
    bool const facing = onPixels || getAxisAlignment() == SCREEN;
    if (auto* const font = facing ? dynamic_cast<FallbackFont*>(getFont()) : nullptr)
        setFont(font->unfiltered());
    if (onPixels)
        return std::max(unsigned(std::lround(pixels)), coarsest);
    return nextStep(facing ? pixels : spare * pixels);
}

// One resolution serves all cameras that have drawn the text of late.
void Lettering::fitResolution(osg::CullStack& view, osg::Camera const* camera) {
    constexpr unsigned int forgotten = 64; // views
    m_looks[camera] = {resolutionIn(view), ++m_time};
    std::erase_if(m_looks, [&](auto const& look) { return m_time - look.second.time > forgotten; });
    unsigned int needed = 0;
    for (auto const& [viewer, look] : m_looks)
        needed = std::max(needed, look.resolution);
    // A text that goes away keeps its glyphs for a step or two, lest it flickers between them.
    bool const near = getFontHeight() >= needed && getFontHeight() < needed * 3 / 2;
    if (!m_fitted || !near)
        setFontResolution(needed, needed);
    m_fitted = true;
}

} // namespace hyxOSG
