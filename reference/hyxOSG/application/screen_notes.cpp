// Writes over the picture.
#include "reference/hyxOSG/application/screen_notes.h"

#include "platform/hyxOSG/application/example_application.h"
#include "reference/hyxOSG/decoration/screen_layer.h"
#include "reference/machinery/text/fonts.h"

#include <osg/Geode>

#include <algorithm>
#include <cmath>

namespace hyxOSG {
namespace {

constexpr int lastBin = 1000;
constexpr float margin = 12;
constexpr double padding = 6;       ///< between a text and the edges of its panel, pixels
constexpr float characterSize = 14; ///< pixels

osg::ref_ptr<Lettering> makeNote(ScreenNotes::Place place) {
    osg::ref_ptr<Lettering> text = new Lettering;
    text->setTypeface(findFont("DejaVuSansMono"));
    text->setCharacterSize(characterSize);
    text->standOnPixels();
    text->setColor(osg::Vec4(1, 1, 1, 1));
    constexpr osgText::Text::AlignmentType alignments[] = {osgText::Text::LEFT_TOP, osgText::Text::CENTER_TOP,
                                                           osgText::Text::LEFT_BOTTOM, osgText::Text::RIGHT_TOP};
    text->setAlignment(alignments[place]);
    return text;
}

std::unique_ptr<Panel> makePanel(ScreenNotes::Place place, osg::Group* hud, void const* key) {
    auto panel = std::make_unique<Panel>(hud, key);
    bool const warns = place == ScreenNotes::ERROR_TEXT;
    panel->setColor(warns ? hyx::Vec4(0.45, 0.08, 0.08, 0.9) : hyx::Vec4(0.08, 0.09, 0.11, 0.75));
    panel->setShown(false);
    return panel;
}

} // namespace

ScreenNotes::ScreenNotes(void const* key) : m_camera(decorator::createScreenLayer(lastBin)), m_geode(new osg::Geode) {
    m_camera->setName("notes");
    m_camera->setNodeMask(ExampleApplication::HUD_MASK);
    m_camera->getOrCreateStateSet()->setMode(GL_BLEND, osg::StateAttribute::ON);
    for (int place = 0; place < NUM_PLACES; ++place)
        m_notes[place].panel = makePanel(Place(place), m_camera, key);
    m_geode->getOrCreateStateSet()->setRenderBinDetails(1, "RenderBin"); // over the panels
    m_camera->addChild(m_geode);
}

void ScreenNotes::setText(Place place, std::string const& text) {
    Note& note = m_notes[place];
    if (text == note.text)
        return;
    note.text = text;
    if (!note.drawn)
        note.drawn = makeNote(place);
    note.drawn->write(text);
    bool const there = m_geode->containsDrawable(note.drawn);
    if (text.empty())
        m_geode->removeDrawable(note.drawn);
    else if (!there)
        m_geode->addDrawable(note.drawn);
    note.panel->setShown(!text.empty());
    m_width = 0; // laid out anew
}

void ScreenNotes::layOut(int width, int height) {
    if (width != m_width || height != m_height) {
        m_width = width;
        m_height = height;
        m_camera->setProjectionMatrixAsOrtho2D(0, width, 0, height);
        osg::Vec3 const places[] = {{margin, float(height) - margin, 0},
                                    {std::floor(float(width) / 2), float(height) - margin, 0},
                                    {margin, margin, 0},
                                    {float(width) - margin, float(height) - margin, 0}};
        for (int place = 0; place < NUM_PLACES; ++place)
            if (m_notes[place].drawn)
                // A long error breaks into lines; tables do not.
                fit(m_notes[place], places[place], place == ERROR_TEXT ? std::max(float(width) - 4 * margin, 1.0f) : 0);
    }
    for (Note& note : m_notes)
        follow(note);
}

void ScreenNotes::follow(Note& note) {
    hyx::Vec2 const corner = note.panel->getPosition();
    osg::Vec3 const way(float(corner.x - note.corner.x), float(corner.y - note.corner.y), 0);
    if (!note.drawn || way == note.moved)
        return;
    note.drawn->setPosition(note.drawn->getPosition() + way - note.moved);
    note.moved = way;
}

// Lays the text out at `place`, and the panel round it, unless a script has placed that.
void ScreenNotes::fit(Note& note, osg::Vec3 const& place, float widest) {
    note.drawn->setPosition(place);
    note.drawn->setMaximumWidth(widest);
    note.moved = {};
    osg::BoundingBox const box = note.drawn->getBoundingBox();
    if (!box.valid())
        return;
    bool const moved = !(note.panel->getPosition() == note.corner), resized = !(note.panel->getSize() == note.size);
    note.corner = hyx::Vec2(box.xMin() - padding, box.yMin() - padding);
    note.size = hyx::Vec2(box.xMax() - box.xMin() + 2 * padding, box.yMax() - box.yMin() + 2 * padding);
    if (!moved)
        note.panel->setPosition(note.corner);
    if (!resized)
        note.panel->setSize(note.size);
    note.panel->update();
}

} // namespace hyxOSG
