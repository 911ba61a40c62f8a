// Asks the system's list of fonts which letters each one has.
#include "reference/machinery/text/typeface.h"

#include "reference/machinery/meshes/notices.h"
#include "reference/machinery/text/letter_packages.h"

#include <fontconfig/fontconfig.h>
#include <osgText/String>

#include <algorithm>
#include <set>
#include <sstream>

namespace hyxOSG {
namespace {

bool has(FcPattern const* font, unsigned int letter) {
    FcCharSet* letters = nullptr; // stays the pattern's
    return FcPatternGetCharSet(font, FC_CHARSET, 0, &letters) == FcResultMatch && FcCharSetHasChar(letters, letter);
}

/// Glyphs are drawn in one colour.
bool isDrawable(FcPattern const* font) {
    FcBool outline = FcFalse, colored = FcFalse;
    FcPatternGetBool(font, FC_OUTLINE, 0, &outline);
    FcPatternGetBool(font, FC_COLOR, 0, &colored);
    return outline && !colored;
}

/// Each face once, whichever font it helps out.
Face* openListed(FcPattern const* font) {
    static std::map<std::pair<std::string, int>, osg::ref_ptr<Face>> faces;
    FcChar8* file = nullptr;
    int index = 0;
    if (FcPatternGetString(font, FC_FILE, 0, &file) != FcResultMatch)
        return nullptr;
    FcPatternGetInteger(font, FC_INDEX, 0, &index);
    auto const [place, isNew] = faces.try_emplace({reinterpret_cast<char const*>(file), index});
    if (isNew)
        place->second = Face::open(place->first.first, index);
    return place->second;
}

void tellOfLacking(unsigned int letter) {
    static std::set<std::string> told;
    std::string const package = packageFor(letter);
    if (!told.insert(package).second)
        return;
    osgText::String shown;
    shown.push_back(letter);
    std::ostringstream notice;
    notice << "no installed font has the letter \"" << shown.createUTF8EncodedString() << "\" (U+" << std::hex
           << std::uppercase << letter << ") of a text";
    if (!package.empty())
        notice << "; the package " << package << " has one that does";
    warn(notice.str());
}

} // namespace

bool leavesInk(unsigned int letter) {
    constexpr unsigned int firstVariation = 0xfe00, lastVariation = 0xfe0f; // they choose the form of the letter before
    switch (hb_unicode_general_category(hb_unicode_funcs_get_default(), letter)) {
    case HB_UNICODE_GENERAL_CATEGORY_CONTROL:
    case HB_UNICODE_GENERAL_CATEGORY_FORMAT:
    case HB_UNICODE_GENERAL_CATEGORY_LINE_SEPARATOR:
    case HB_UNICODE_GENERAL_CATEGORY_PARAGRAPH_SEPARATOR:
    case HB_UNICODE_GENERAL_CATEGORY_SPACE_SEPARATOR:
        return false;
    default:
        return letter < firstVariation || letter > lastVariation;
    }
}

void Typeface::Destroy::operator()(FcPattern* pattern) const {
    FcPatternDestroy(pattern);
}

void Typeface::Destroy::operator()(FcFontSet* fonts) const {
    FcFontSetDestroy(fonts);
}

Typeface::Typeface(osg::ref_ptr<Face> own) : m_own(std::move(own)) {}

Typeface::~Typeface() = default;

std::span<FcPattern*> Typeface::others() {
    if (!m_listed) { // the list takes the time of a few frames, and most texts need no other font
        m_listed = true;
        int faces = 0;
        m_pattern.reset(FcFreeTypeQuery(reinterpret_cast<FcChar8 const*>(m_own->file().c_str()), 0, nullptr, &faces));
        if (m_pattern) {
            FcPatternDel(m_pattern.get(), FC_CHARSET); // not those that have most of its letters
            FcPatternDel(m_pattern.get(), FC_LANG);    // the user's stands for those that it can write
            FcConfigSubstitute(nullptr, m_pattern.get(), FcMatchPattern);
            FcDefaultSubstitute(m_pattern.get());
            FcResult result = FcResultMatch;
            m_others.reset(FcFontSort(nullptr, m_pattern.get(), FcFalse, nullptr, &result));
        }
    }
    return m_others ? std::span(m_others->fonts, std::size_t(m_others->nfont)) : std::span<FcPattern*>();
}

Face* Typeface::find(std::u32string_view letters) {
    auto const hasAll = [letters](auto const& hasOne) {
        return std::all_of(letters.begin(), letters.end(),
                           [&](unsigned int letter) { return !leavesInk(letter) || hasOne(letter); });
    };
    if (hasAll([this](unsigned int letter) { return m_own->has(letter); }))
        return m_own;
    if (auto const known = m_found.find(letters); known != m_found.end())
        return known->second;
    Face* found = nullptr;
    for (FcPattern const* const other : others())
        if (!found && isDrawable(other) && hasAll([other](unsigned int letter) { return has(other, letter); }))
            found = openListed(other);
    constexpr std::size_t longest = 16, mostKept = 20000;
    if (m_found.size() >= mostKept)
        m_found.clear();
    if (letters.size() <= longest)
        m_found.emplace(letters, found);
    return found;
}

Face& Typeface::choose(std::u32string_view cluster) {
    for (std::size_t const length : {cluster.size(), std::size_t(1)})
        if (Face* const face = find(cluster.substr(0, length)))
            return *face;
    tellOfLacking(cluster.front());
    return *m_own;
}

} // namespace hyxOSG
