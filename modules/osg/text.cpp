// Letters in the scene.
#include "modules/osg/scene_graph_rows.h"
#include "platform/osg/texts.h"

#include <osgText/Text>

namespace {

void set_size(osgText::TextBase& self, float height) {
    self.setCharacterSize(height);
}

void set_position(osgText::TextBase& self, osg::Vec3f const& position) {
    self.setPosition(position);
}

osg::Vec3f position(osgText::TextBase const& self) {
    return self.getPosition();
}

void set_text_color(osgText::TextBase& self, osg::Vec4f const& color) {
    self.setColor(color);
}

osg::Vec4f text_color(osgText::TextBase const& self) {
    return self.getColor();
}

constexpr Declared text_rows[] = {
    FUNCTION(TextBase_setText, ADAPTER(osgText::TextBase, setText, osg::writeText, (std::string const&))),
    FUNCTION(TextBase_getText, ADAPTER(osgText::TextBase, getText, osg::writtenText, () const)),
    FUNCTION(TextBase_setCharacterSize, ADAPTER(osgText::TextBase, setCharacterSize, set_size, (float))),
    FUNCTION(TextBase_getCharacterHeight, METHOD(osgText::TextBase, getCharacterHeight, () const)),
    FUNCTION(TextBase_setPosition, ADAPTER(osgText::TextBase, setPosition, set_position, (osg::Vec3f const&))),
    FUNCTION(TextBase_getPosition, ADAPTER(osgText::TextBase, getPosition, position, () const)),
    FUNCTION(TextBase_setColor, ADAPTER(osgText::TextBase, setColor, set_text_color, (osg::Vec4f const&))),
    FUNCTION(TextBase_getColor, ADAPTER(osgText::TextBase, getColor, text_color, () const)),
    SHARED_CLASS_ROWS(osgText::TextBase, TextBase),
    FUNCTION(new_Text, MAKE(osgText::Text, osg::createLettering, ())),
    SHARED_CLASS_ROWS(osgText::Text, Text),
};

} // namespace

ROWS(text_rows);
