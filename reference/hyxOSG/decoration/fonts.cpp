// Looks fonts up in the system's list.
#include "reference/hyxOSG/decoration/fonts.h"

#include "reference/machinery/files/missing_file.h"
#include "reference/machinery/meshes/notices.h"
#include "reference/machinery/model_files/guarded_reading.h"

#include <osgDB/FileUtils>

#include <filesystem>
#include <map>

namespace hyxOSG::decorator {
namespace {

std::string findOwn(std::string const& file) {
    return osgDB::findDataFile(file);
}

// The system's list has a substitute for every name; a file is meant as it is called.
std::string findInSystem(std::string const& file) {
    std::string const found = osgText::findFontFile(file);
    std::filesystem::path const asked(file);
    bool const isFile = asked.has_parent_path() || asked.extension() == ".ttf" || asked.extension() == ".otf" ||
                        asked.extension() == ".ttc" || asked.extension() == ".pfb";
    return isFile && std::filesystem::path(found).filename() != asked.filename() ? "" : found;
}

} // namespace

osg::ref_ptr<osgText::Font> findFont(std::string const& name) {
    static std::map<std::string, osg::ref_ptr<osgText::Font>> fonts;
    auto const known = fonts.find(name);
    if (known != fonts.end())
        return known->second;
    osg::ref_ptr<osgText::Font> font;
    // The system's list of fonts is asked last: where there is none, that makes noise.
    for (auto const find : {&findOwn, &findInSystem})
        for (std::string const& file : {name, name + ".ttf"})
            if (std::string const path = font ? "" : find(file); !path.empty())
                font = readFont(path).thing;
    fonts[name] = font;
    return font;
}

osg::ref_ptr<osgText::Font> wantedFont(std::string const& name) {
    osg::ref_ptr<osgText::Font> const font = findFont(name);
    if (!font)
        warn(std::filesystem::is_regular_file(name) ? "the font \"" + name + "\" cannot be read"
                                                    : missingFile("font", name));
    return font;
}

} // namespace hyxOSG::decorator
