// The operations of texts, handed to the scene graph's own.
#include "platform/hyxOSG/decoration/text.h"

#include "platform/hyxOSG/application/example_application.h"
#include "reference/machinery/meshes/conversions.h"
#include "reference/machinery/text/fonts.h"
#include "reference/machinery/text/lettering.h"

#include <cmath>
#include <stdexcept>

namespace hyxOSG {
namespace {

void requireEnumerator(int value, int last, char const* what) {
    if (value < 0 || value > last)
        throw std::invalid_argument(std::string("no ") + what + " has the value " + std::to_string(value) +
                                    "; use one of 0 to " + std::to_string(last));
}

osg::ref_ptr<Lettering> createDrawable() {
    osg::ref_ptr<Lettering> text = new Lettering;
    text->setTypeface(findFont(usualFont));
    text->setCharacterSize(1);
    text->setAxisAlignment(osgText::Text::XZ_PLANE);
    text->setBackdropColor(osg::Vec4(0, 0, 0, 1));
    return text;
}

} // namespace

Text::Text() : m_text(createDrawable()) {
    addDrawable(m_text);
    setNodeMask(~ExampleApplication::CASTS_SHADOWS_MASK);
    getOrCreateStateSet()->setMode(GL_LIGHTING, osg::StateAttribute::OFF);
}

Text::Text(hyx::String const& text, hyx::Vec3 const& position, hyx::Vec4 const& color) : Text() {
    setText(text);
    setPosition(position);
    m_text->setColor(toOsg(requireColor(hyx::Vec4f(color))));
}

Text::~Text() = default;

void Text::setFont(hyx::String const& font) {
    if (osg::ref_ptr<Typeface> const found = wantedFont(font))
        m_text->setTypeface(found);
}

void Text::setCharacterSize(float size) {
    if (!(size > 0) || !std::isfinite(size))
        throw std::invalid_argument("the character size must be positive and finite");
    m_text->setCharacterSize(size);
}

void Text::setColor(hyx::Vec4f const& color) {
    m_text->setColor(toOsg(requireColor(color)));
}

void Text::setPosition(hyx::Vec3 const& position) {
    if (!std::isfinite(position.x + position.y + position.z))
        throw std::invalid_argument("the text's position must be finite");
    m_text->setPosition(toOsg(position));
    dirtyBound();
}

void Text::setAxisAlignment(AxisAlignment alignment) {
    requireEnumerator(alignment, USER_DEFINED_ROTATION, "axis alignment");
    m_text->setAxisAlignment(static_cast<osgText::Text::AxisAlignment>(alignment));
}

void Text::setBackdropType(BackdropType backdrop) {
    requireEnumerator(backdrop, NONE, "backdrop");
    m_text->setBackdropType(static_cast<osgText::Text::BackdropType>(backdrop));
}

void Text::setDrawMode(DrawModeMask mask) {
    requireEnumerator(mask, TEXT | BOUNDINGBOX | FILLEDBOUNDINGBOX | ALIGNMENT, "sum of draw modes");
    m_text->setDrawMode(static_cast<unsigned int>(mask));
    m_text->update(); // frame and cross are made with the glyphs
}

void Text::setText(hyx::String const& text) {
    m_text->write(text);
}

void Text::setAlignment(AlignmentType alignment) {
    requireEnumerator(alignment, RIGHT_BOTTOM_BASE_LINE, "alignment");
    m_text->setAlignment(static_cast<osgText::Text::AlignmentType>(alignment));
}

void Text_reference(Text* text) {
    if (text)
        text->ref();
}

void Text_unreference(Text* text) {
    if (text)
        text->unref();
}

} // namespace hyxOSG
