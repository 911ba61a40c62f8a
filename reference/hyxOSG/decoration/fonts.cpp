// Looks fonts up in the system's list.
#include "reference/hyxOSG/decoration/fonts.h"

#include <map>

namespace hyxOSG::decorator {

osg::ref_ptr<osgText::Font> findFont(std::string const& name) {
    static std::map<std::string, osg::ref_ptr<osgText::Font>> fonts;
    auto const known = fonts.find(name);
    if (known != fonts.end())
        return known->second;
    osg::ref_ptr<osgText::Font> font = osgText::readRefFontFile(name);
    if (!font && name.find('.') == std::string::npos)
        font = osgText::readRefFontFile(name + ".ttf");
    fonts[name] = font;
    return font;
}

} // namespace hyxOSG::decorator
