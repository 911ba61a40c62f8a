// Lays rows of text out from the upper left corner.
#include "reference/hyxOSG/decoration/text_rows.h"

#include "reference/machinery/text/fonts.h"

#include <cmath>

namespace hyxOSG::decorator {
namespace {

constexpr float lineSpacing = 1.3f;
constexpr float leftMargin = 8; // pixels
constexpr float topMargin = 6;

/// The part of every scene that is there as long as its context.
class RowsGeode : public osg::Geode {
public:
    void releaseGLObjects(osg::State* state) const override {
        osg::Geode::releaseGLObjects(state);
        releaseLetters(state);
    }
};

} // namespace

TextRows::TextRows() : m_geode(new RowsGeode) {
    m_geode->setName("SceneDecorator text");
    m_geode->setCullingActive(false);
    setFontName(usualFont);
}

void TextRows::setText(int row, std::string const& text, osg::Vec4 const& color) {
    osg::ref_ptr<Lettering>& entry = m_rows[row];
    if (text.empty()) {
        m_geode->removeChild(entry);
        m_rows.erase(row);
        return;
    }
    if (!entry) {
        entry = new Lettering;
        entry->setTypeface(findFont(m_fontName));
        m_geode->addChild(entry);
        m_changed = true;
    }
    entry->write(text);
    entry->setColor(color);
}

void TextRows::clear() {
    m_geode->removeChildren(0, m_geode->getNumChildren());
    m_rows.clear();
}

void TextRows::setFontName(std::string const& name) {
    m_fontName = name;
    m_changed = true;
}

void TextRows::setFontSize(float size) {
    m_fontSize = size;
    m_changed = true;
}

void TextRows::layOut(osg::Vec2f const& window, float scale) {
    if (!m_changed && window == m_window && scale == m_scale)
        return;
    m_changed = false;
    m_window = window;
    m_scale = scale;
    if (m_rows.empty())
        return; // many scenes show no text, and a font is looked up and tried in the time of a few frames
    osg::ref_ptr<Typeface> const font = findFont(m_fontName);
    float const size = m_fontSize * scale;
    for (auto const& [row, text] : m_rows) {
        text->setTypeface(font);
        text->setCharacterSize(size);
        // On whole pixels, so that glyphs stay sharp.
        text->setPosition(osg::Vec3(std::round(leftMargin * scale),
                                    std::round(window.y() - topMargin * scale - (row * lineSpacing + 1) * size), 0));
    }
}

} // namespace hyxOSG::decorator
