// Asks fontconfig which installed face has a name.
#include "reference/machinery/text/font_list.h"

#include <fontconfig/fontconfig.h>

#include <cctype>
#include <filesystem>
#include <memory>
#include <set>

namespace hyxOSG {
namespace {

struct DestroyPattern {
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
};

using Pattern = std::unique_ptr<FcPattern, DestroyPattern>;

std::string textOf(FcPattern const* pattern, char const* object, int number = 0) {
    FcChar8* text = nullptr; // stays the pattern's
    bool const found = FcPatternGetString(pattern, object, number, &text) == FcResultMatch;
    return found ? reinterpret_cast<char const*>(text) : "";
}

/// Blanks, hyphens and capitals make no difference between names.
std::string plain(std::string const& name) {
    std::string letters;
    for (unsigned char const letter : name)
        if (letter != ' ' && letter != '-')
            letters += char(std::tolower(letter));
    return letters;
}

bool isCalled(FcPattern const* face, std::string const& name) {
    for (char const* const object : {FC_FAMILY, FC_FULLNAME, FC_POSTSCRIPT_NAME})
        for (int number = 0; !textOf(face, object, number).empty(); ++number)
            if (plain(textOf(face, object, number)) == plain(name))
                return true;
    return plain(std::filesystem::path(textOf(face, FC_FILE)).stem()) == plain(name);
}

/// Families that the list itself stands for.
bool isGeneric(std::string const& family) {
    static std::set<std::string> const generic{"",     "sans",      "sansserif", "serif",
                                               "mono", "monospace", "cursive",   "fantasy"};
    return generic.contains(plain(family));
}

bool isFileName(std::filesystem::path const& name) {
    static std::set<std::string> const endings{".ttf", ".otf", ".ttc", ".otc", ".pfb"};
    return name.has_parent_path() || endings.contains(name.extension());
}

ListedFace describe(FcPattern const* face) {
    ListedFace listed{textOf(face, FC_FILE), 0, textOf(face, FC_FAMILY), false};
    FcPatternGetInteger(face, FC_INDEX, 0, &listed.index);
    return listed;
}

std::optional<ListedFace> findFile(std::filesystem::path const& name) {
    FcFontSet const* const fonts = FcConfigGetFonts(nullptr, FcSetSystem); // stays the list's
    for (int i = 0; !name.has_parent_path() && fonts && i < fonts->nfont; ++i)
        if (std::filesystem::path(textOf(fonts->fonts[i], FC_FILE)).filename() == name)
            return describe(fonts->fonts[i]);
    return std::nullopt;
}

} // namespace

std::optional<ListedFace> findListed(std::string const& name) {
    if (!FcInit())
        return std::nullopt;
    if (isFileName(name))
        return findFile(name);
    Pattern const asked(FcNameParse(reinterpret_cast<FcChar8 const*>(name.c_str())));
    if (!asked)
        return std::nullopt;
    std::string const family = textOf(asked.get(), FC_FAMILY);
    FcConfigSubstitute(nullptr, asked.get(), FcMatchPattern);
    FcDefaultSubstitute(asked.get());
    FcResult result = FcResultNoMatch;
    Pattern const face(FcFontMatch(nullptr, asked.get(), &result));
    if (!face || textOf(face.get(), FC_FILE).empty())
        return std::nullopt;
    ListedFace listed = describe(face.get());
    listed.isSubstitute = !isGeneric(family) && !isCalled(face.get(), family);
    return listed;
}

} // namespace hyxOSG
