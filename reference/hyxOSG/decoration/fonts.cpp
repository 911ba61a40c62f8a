// Looks fonts up in the system's list.
#include "reference/hyxOSG/decoration/fonts.h"

#include "reference/machinery/model_files/guarded_reading.h"

#include <map>

namespace hyxOSG::decorator {

osg::ref_ptr<osgText::Font> findFont(std::string const& name) {
    static std::map<std::string, osg::ref_ptr<osgText::Font>> fonts;
    auto const known = fonts.find(name);
    if (known != fonts.end())
        return known->second;
    osg::ref_ptr<osgText::Font> font;
    for (std::string const& file : {name, name + ".ttf"})
        if (std::string const path = font ? "" : osgText::findFontFile(file); !path.empty())
            font = readFont(path).thing;
    fonts[name] = font;
    return font;
}

} // namespace hyxOSG::decorator
