// Writes over the picture.
#include "reference/hyxOSG/application/screen_notes.h"

#include "platform/hyxOSG/application/example_application.h"
#include "reference/hyxOSG/decoration/fonts.h"
#include "reference/hyxOSG/decoration/screen_layer.h"

#include <osg/Geode>

#include <algorithm>
#include <cmath>

namespace hyxOSG {
namespace {

constexpr int lastBin = 1000;
constexpr float margin = 12;
constexpr float characterSize = 14; ///< pixels

osg::ref_ptr<osgText::Text> makeNote(ScreenNotes::Place place) {
    osg::ref_ptr<osgText::Text> text = new osgText::Text;
    text->setFont(decorator::findFont("DejaVuSansMono"));
    text->setCharacterSize(characterSize);
    text->setFontResolution(unsigned(characterSize), unsigned(characterSize));
    text->setDataVariance(osg::Object::DYNAMIC);
    text->setUseDisplayList(false);
    text->setDrawMode(osgText::Text::TEXT | osgText::Text::FILLEDBOUNDINGBOX);
    bool const warns = place == ScreenNotes::ERROR_TEXT;
    text->setBoundingBoxColor(warns ? osg::Vec4(0.45f, 0.08f, 0.08f, 0.9f) : osg::Vec4(0.08f, 0.09f, 0.11f, 0.75f));
    text->setBoundingBoxMargin(6);
    text->setColor(osg::Vec4(1, 1, 1, 1));
    constexpr osgText::Text::AlignmentType alignments[] = {osgText::Text::LEFT_TOP, osgText::Text::CENTER_TOP,
                                                           osgText::Text::LEFT_BOTTOM, osgText::Text::RIGHT_TOP};
    text->setAlignment(alignments[place]);
    return text;
}

} // namespace

ScreenNotes::ScreenNotes() : m_camera(decorator::createScreenLayer(lastBin)), m_geode(new osg::Geode) {
    m_camera->setName("notes");
    m_camera->setNodeMask(ExampleApplication::HUD_MASK);
    m_camera->getOrCreateStateSet()->setMode(GL_BLEND, osg::StateAttribute::ON);
    m_camera->addChild(m_geode);
}

void ScreenNotes::setText(Place place, std::string const& text) {
    if (text == m_texts[place])
        return;
    m_texts[place] = text;
    if (!m_drawn[place])
        m_drawn[place] = makeNote(place);
    m_drawn[place]->setText(text, osgText::String::ENCODING_UTF8);
    bool const there = m_geode->containsDrawable(m_drawn[place]);
    if (text.empty())
        m_geode->removeDrawable(m_drawn[place]);
    else if (!there)
        m_geode->addDrawable(m_drawn[place]);
    m_width = 0; // laid out anew
}

void ScreenNotes::layOut(int width, int height) {
    if (width == m_width && height == m_height)
        return;
    m_width = width;
    m_height = height;
    m_camera->setProjectionMatrixAsOrtho2D(0, width, 0, height);
    osg::Vec3 const places[] = {{margin, float(height) - margin, 0},
                                {std::floor(float(width) / 2), float(height) - margin, 0},
                                {margin, margin, 0},
                                {float(width) - margin, float(height) - margin, 0}};
    for (int place = 0; place < NUM_PLACES; ++place)
        if (m_drawn[place]) {
            m_drawn[place]->setPosition(places[place]);
            // A long error breaks into lines; tables do not.
            m_drawn[place]->setMaximumWidth(place == ERROR_TEXT ? std::max(float(width) - 4 * margin, 1.0f) : 0);
        }
}

} // namespace hyxOSG
