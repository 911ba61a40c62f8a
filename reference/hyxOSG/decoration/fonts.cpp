// Looks fonts up in the system's list.
#include "reference/hyxOSG/decoration/fonts.h"

#include "reference/machinery/model_files/guarded_reading.h"

#include <osgDB/FileUtils>

#include <map>

namespace hyxOSG::decorator {
namespace {

std::string findOwn(std::string const& file) {
    return osgDB::findDataFile(file);
}

} // namespace

osg::ref_ptr<osgText::Font> findFont(std::string const& name) {
    static std::map<std::string, osg::ref_ptr<osgText::Font>> fonts;
    auto const known = fonts.find(name);
    if (known != fonts.end())
        return known->second;
    osg::ref_ptr<osgText::Font> font;
    // The system's list of fonts is asked last: where there is none, that makes noise.
    for (auto const find : {&findOwn, &osgText::findFontFile})
        for (std::string const& file : {name, name + ".ttf"})
            if (std::string const path = font ? "" : find(file); !path.empty())
                font = readFont(path).thing;
    fonts[name] = font;
    return font;
}

} // namespace hyxOSG::decorator
