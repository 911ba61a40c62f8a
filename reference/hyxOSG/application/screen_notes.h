// What an application says of itself on its picture.
#pragma once

#include "platform/hyxOSG/decoration/panel.h"
#include "reference/machinery/text/lettering.h"

#include <osg/Camera>

#include <array>
#include <memory>
#include <string>

namespace hyxOSG {

/// Texts over everything, each on a panel: the help in the upper left corner, an error in the middle of the upper edge,
/// what is selected in the upper right corner, and a line of figures along the lower edge. An empty one is not drawn. A
/// panel that a script has moved or resized stays so, and its text goes with it.
class ScreenNotes {
public:
    enum Place { HELP, ERROR_TEXT, STATUS, SELECTION, NUM_PLACES };

    /// \param key what the panels belong to
    explicit ScreenNotes(void const* key);

    osg::Group* node() const { return m_camera; }

    Panel& panel(Place place) { return *m_notes[place].panel; }

    void setText(Place place, std::string const& text);

    std::string const& text(Place place) const { return m_notes[place].text; }

    /// Fits the notes to a window of this size in pixels.
    void layOut(int width, int height);

private:
    struct Note {
        std::string text;
        osg::ref_ptr<Lettering> drawn; ///< made when first needed
        std::unique_ptr<Panel> panel;
        hyx::Vec2 corner, size{100, 20}; ///< of the panel, as they were laid out
        osg::Vec3 moved;                 ///< by how much the text went with the panel
    };

    static void fit(Note& note, osg::Vec3 const& place, float widest);
    static void follow(Note& note);

    osg::ref_ptr<osg::Camera> m_camera;
    osg::ref_ptr<osg::Geode> m_geode;
    std::array<Note, NUM_PLACES> m_notes;
    int m_width = 0;
    int m_height = 0;
};

} // namespace hyxOSG
