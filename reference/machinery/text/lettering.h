// Texts that are drawn as they are written.
#pragma once

#include "reference/machinery/text/glyph_sheet.h"
#include "reference/machinery/text/text_layout.h"

#include <osg/Camera>
#include <osg/CullStack>
#include <osgText/Text>

namespace osgUtil {
class CullVisitor;
} // namespace osgUtil

#include <map>
#include <string>

namespace hyxOSG {

/// A text of the scene graph in any script, whose glyphs are made as large as they are drawn.
class Lettering : public osgText::Text {
public:
    Lettering();
    Lettering(Lettering const& other, osg::CopyOp const& copying = osg::CopyOp::SHALLOW_COPY);

    osg::Object* cloneType() const override { return new Lettering; }

    osg::Object* clone(osg::CopyOp const& copying) const override { return new Lettering(*this, copying); }

    /// What is shown from now on: UTF-8, in the order in which it is read aloud. Throws as `requireDrawable`.
    void write(std::string const& text);

    std::string const& written() const { return m_written; }

    /// Nothing is shown without one.
    void setTypeface(osg::ref_ptr<Typeface> const& typeface);

    /// Says that a unit is a pixel, so that the text has its true width before the first picture.
    void standOnPixels();

    using osgText::Text::accept;
    void accept(osg::NodeVisitor& visitor) override;
    void accept(osg::PrimitiveFunctor& functor) const override;
    void drawImplementation(osg::RenderInfo& info) const override;
    void releaseGLObjects(osg::State* state) const override;

protected:
    osg::StateSet* createStateSet() override;
    void computeGlyphRepresentation() override;

private:
    /// Rectangles by the texture that they show.
    using Quads = std::map<osg::ref_ptr<osg::Texture2D>, osg::ref_ptr<osg::DrawElementsUInt>>;

    struct Look {
        unsigned int resolution = 0; ///< that a camera's picture wants, pixels
        unsigned int time = 0;       ///< counted in views
    };

    osg::Vec2f scale() const;
    float lineBegin(TextLine const& line) const;

    /// Calls a function with each glyph and the place of its line, em.
    template <class Take>
    void forEachGlyph(Take const& take) const {
        float base = 0;
        for (TextLine const& line : m_lines) {
            osg::Vec2f const begin(lineBegin(line), base);
            for (PlacedGlyph const& glyph : line.glyphs)
                take(glyph, begin);
            base -= 1 + _lineSpacing;
        }
    }

    float heightIn(osg::CullStack& view) const;
    Meeting meetingAt(float pixels) const;
    void fitSheet(osgUtil::CullVisitor& view);

    void clearQuads();
    void layQuads();
    void layGlyphs(Quads& quads, osg::Vec2f const& shift, float stroke);
    void addQuad(Quads& quads, SheetGlyph const& glyph, osg::Vec2f const& origin);
    void drawInBothBuffers(osg::State& state) const;
    void drawAll(osg::State& state) const;
    void drawQuads(osg::State& state, Quads const& quads, osg::Vec4 const& color) const;
    void drawDecoration(osg::State& state) const;

    std::string m_written;
    osg::ref_ptr<Typeface> m_typeface;
    std::vector<TextLine> m_lines;
    Grain m_grain; ///< of the lines
    osg::ref_ptr<GlyphSheet> m_sheet;
    bool m_laid = false; ///< whether the quads show the lines with the sheet's glyphs
    Quads m_backdrop, m_letters;
    std::map<osg::Camera const*, Look> m_looks;
    unsigned int m_time = 0;
};

} // namespace hyxOSG
