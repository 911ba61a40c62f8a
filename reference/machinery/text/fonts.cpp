// Looks fonts up in files and in the system's list.
#include "reference/machinery/text/fonts.h"

#include "reference/machinery/files/missing_file.h"
#include "reference/machinery/files/own_files.h"
#include "reference/machinery/meshes/notices.h"
#include "reference/machinery/model_files/guarded_reading.h"
#include "reference/machinery/text/font_list.h"
#include "reference/machinery/text/glyph_sheet.h"
#include "reference/machinery/text/letters_program.h"

#include <osgDB/FileUtils>

#include <filesystem>
#include <map>

namespace hyxOSG {
namespace {

struct Font {
    osg::ref_ptr<Typeface> typeface;
    std::string substitute; ///< the family that stands for one that is not installed
};

bool comesAlong(std::string const& path) {
    std::string const folder = ownFolder("fonts");
    return !folder.empty() && path.starts_with(folder);
}

Font openFont(std::string const& name) {
    for (std::string const& file : {name, name + ".ttf"})
        if (std::string const path = osgDB::findDataFile(file); !path.empty()) {
            osg::ref_ptr<Face> const face = (comesAlong(path) ? readFontHere(path) : readFont(path)).thing;
            return {face ? new Typeface(face) : nullptr, ""};
        }
    // Asked last: where there is no list, that makes noise. Who lists a font has read it.
    auto const listed = findListed(name);
    osg::ref_ptr<Face> const face = listed ? Face::open(listed->file, listed->index) : nullptr;
    return {face ? new Typeface(face) : nullptr, listed && listed->isSubstitute ? listed->family : ""};
}

Font const& fontOf(std::string const& name) {
    static std::map<std::string, Font> fonts;
    auto const [place, isNew] = fonts.try_emplace(name);
    if (isNew)
        place->second = openFont(name);
    return place->second;
}

} // namespace

osg::ref_ptr<Typeface> findFont(std::string const& name) {
    return fontOf(name).typeface;
}

osg::ref_ptr<Typeface> wantedFont(std::string const& name) {
    Font const& font = fontOf(name);
    if (!font.typeface)
        warn(std::filesystem::is_regular_file(name) ? "the font \"" + name + "\" cannot be read"
                                                    : missingFile("font", name));
    else if (!font.substitute.empty())
        warn("there is no font \"" + name + "\"; \"" + font.substitute + "\" stands for it");
    return font.typeface;
}

void releaseLetters(osg::State* state) {
    GlyphSheet::releaseAll(state);
    releaseLettersPrograms(state);
}

} // namespace hyxOSG
