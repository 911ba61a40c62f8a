// What an application says of itself on its picture.
#pragma once

#include <osg/Camera>
#include <osgText/Text>

#include <array>
#include <string>

namespace hyxOSG {

/// Texts over everything, each on a dark ground: the help in the upper left corner, an error in the middle of the upper
/// edge, what is selected in the upper right corner, and a line of figures along the lower edge. An empty one is not
/// drawn.
class ScreenNotes {
public:
    enum Place { HELP, ERROR_TEXT, STATUS, SELECTION, NUM_PLACES };

    ScreenNotes();

    osg::Node* node() const { return m_camera; }

    void setText(Place place, std::string const& text);

    std::string const& text(Place place) const { return m_texts[place]; }

    /// Fits the notes to a window of this size in pixels.
    void layOut(int width, int height);

private:
    osg::ref_ptr<osg::Camera> m_camera;
    osg::ref_ptr<osg::Geode> m_geode;
    std::array<osg::ref_ptr<osgText::Text>, NUM_PLACES> m_drawn; ///< made when first needed
    std::array<std::string, NUM_PLACES> m_texts;
    int m_width = 0;
    int m_height = 0;
};

} // namespace hyxOSG
