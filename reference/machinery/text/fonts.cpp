// Looks fonts up in the system's list.
#include "reference/machinery/text/fonts.h"

#include "reference/machinery/files/missing_file.h"
#include "reference/machinery/files/own_files.h"
#include "reference/machinery/meshes/notices.h"
#include "reference/machinery/model_files/guarded_reading.h"
#include "reference/machinery/text/glyph_sheet.h"
#include "reference/machinery/text/letters_program.h"

#include <osgDB/FileUtils>
#include <osgText/Font>

#include <filesystem>
#include <map>

namespace hyxOSG {
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

bool comesAlong(std::string const& path) {
    std::string const folder = ownFolder("fonts");
    return !folder.empty() && path.starts_with(folder);
}

} // namespace

osg::ref_ptr<Typeface> findFont(std::string const& name) {
    static std::map<std::string, osg::ref_ptr<Typeface>> fonts;
    auto const [place, isNew] = fonts.try_emplace(name);
    if (!isNew)
        return place->second;
    osg::ref_ptr<Face> face;
    // The system's list of fonts is asked last: where there is none, that makes noise. Who lists a font has read it.
    for (auto const find : {&findOwn, &findInSystem})
        for (std::string const& file : {name, name + ".ttf"})
            if (std::string const path = face ? "" : find(file); !path.empty())
                face = (find == &findInSystem || comesAlong(path) ? readFontHere(path) : readFont(path)).thing;
    return place->second = face ? new Typeface(face) : nullptr;
}

osg::ref_ptr<Typeface> wantedFont(std::string const& name) {
    osg::ref_ptr<Typeface> const font = findFont(name);
    if (!font)
        warn(std::filesystem::is_regular_file(name) ? "the font \"" + name + "\" cannot be read"
                                                    : missingFile("font", name));
    return font;
}

void releaseLetters(osg::State* state) {
    GlyphSheet::releaseAll(state);
    releaseLettersPrograms(state);
}

} // namespace hyxOSG
