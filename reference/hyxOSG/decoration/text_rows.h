// Rows of text over the scene, counted from the upper edge of the window.
#pragma once

#include "reference/machinery/text/lettering.h"

#include <osg/Geode>
#include <osg/Vec2f>
#include <osg/Vec4>
#include <osg/ref_ptr>

#include <map>
#include <string>

namespace hyxOSG::decorator {

class TextRows {
public:
    static constexpr int maximumRow = 999;

    TextRows();

    osg::Node* node() { return m_geode; }

    /// An empty text clears the row.
    void setText(int row, std::string const& text, osg::Vec4 const& color);
    void clear();

    void setFontName(std::string const& name);

    std::string const& fontName() const { return m_fontName; }

    void setFontSize(float size);

    float fontSize() const { return m_fontSize; }

    /// Places the rows after a change of text, font or window.
    void layOut(osg::Vec2f const& window, float scale);

private:
    std::map<int, osg::ref_ptr<Lettering>> m_rows;
    osg::ref_ptr<osg::Geode> m_geode;
    std::string m_fontName;
    float m_fontSize = 14;
    osg::Vec2f m_window;
    float m_scale = 1;
    bool m_changed = false;
};

} // namespace hyxOSG::decorator
