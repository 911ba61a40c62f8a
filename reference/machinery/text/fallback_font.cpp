// Asks the system's list of fonts which letters each one has.
#include "reference/machinery/text/fallback_font.h"

#include "reference/machinery/meshes/notices.h"
#include "reference/machinery/model_files/guarded_reading.h"
#include "reference/machinery/text/letter_packages.h"

#include <fontconfig/fontconfig.h>
#include <fribidi.h>
#include <osgText/Glyph>
#include <osgText/String>

#include <map>
#include <memory>
#include <set>
#include <span>
#include <sstream>

namespace hyxOSG {
namespace {

using osgText::FontResolution;

constexpr unsigned int endOfAscii = 0x80;

template <auto destroy>
struct Destroy {
    template <class Thing>
    void operator()(Thing* thing) const {
        destroy(thing);
    }
};

using Pattern = std::unique_ptr<FcPattern, Destroy<&FcPatternDestroy>>;
using FontSet = std::unique_ptr<FcFontSet, Destroy<&FcFontSetDestroy>>;

bool has(FcPattern const* font, unsigned int letter) {
    FcCharSet* letters = nullptr; // stays the pattern's
    return FcPatternGetCharSet(font, FC_CHARSET, 0, &letters) == FcResultMatch && FcCharSetHasChar(letters, letter);
}

// The scene graph's reader takes the first face of a file, and draws it in one colour.
bool isDrawable(FcPattern const* font) {
    constexpr int face = 0xffff; // beside it stands the instance of a variable font
    FcBool outline = FcFalse, colored = FcFalse;
    int index = 0;
    FcPatternGetBool(font, FC_OUTLINE, 0, &outline);
    FcPatternGetBool(font, FC_COLOR, 0, &colored);
    FcPatternGetInteger(font, FC_INDEX, 0, &index);
    return outline && !colored && !(index & face);
}

// Each file once for each anisotropy, whichever font it helps out.
osg::ref_ptr<osgText::Font> readListed(FcPattern const* font, float anisotropy) {
    static std::map<std::pair<std::string, float>, osg::ref_ptr<osgText::Font>> fonts;
    FcChar8* file = nullptr;
    if (FcPatternGetString(font, FC_FILE, 0, &file) != FcResultMatch)
        return nullptr;
    auto const [place, isNew] = fonts.try_emplace({reinterpret_cast<char const*>(file), anisotropy});
    if (isNew)
        place->second = readFontHere(place->first.first).thing;
    if (place->second)
        place->second->setMaxAnisotropy(anisotropy);
    return place->second;
}

bool leavesInk(unsigned int letter) {
    constexpr unsigned int firstVariation = 0xfe00, lastVariation = 0xfe0f; // they choose the form of the letter before
    bool const controls = FRIBIDI_IS_EXPLICIT_OR_SEPARATOR_OR_BN_OR_WS(fribidi_get_bidi_type(letter));
    return !controls && (letter < firstVariation || letter > lastVariation);
}

void tellOfLacking(unsigned int letter) {
    static std::set<std::string> told;
    std::string const package = packageFor(letter);
    if (!leavesInk(letter) || !told.insert(package).second)
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

/// Where each letter is taken from.
class FallbackFont::Sources : public osgText::Font::FontImplementation {
public:
    explicit Sources(osg::ref_ptr<osgText::Font> const& own) : m_own(own) {
        std::string const file = own->getFileName();
        int faces = 0;
        m_ownPattern.reset(FcFreeTypeQuery(reinterpret_cast<FcChar8 const*>(file.c_str()), 0, nullptr, &faces));
    }

    std::string getFileName() const override { return m_own->getFileName(); }

    bool supportsMultipleFontResolutions() const override { return true; }

    bool hasVertical() const override { return m_own->hasVertical(); }

    bool getVerticalSize(float& ascender, float& descender) const override {
        return m_own->getVerticalSize(ascender, descender);
    }

    osgText::Glyph* getGlyph(FontResolution const& resolution, unsigned int letter) override {
        return sourceOf(letter).getGlyph(resolution, letter);
    }

    osgText::Glyph3D* getGlyph3D(FontResolution const& resolution, unsigned int letter) override {
        return sourceOf(letter).getGlyph3D(resolution, letter);
    }

    osg::Vec2 getKerning(FontResolution const& resolution, unsigned int left, unsigned int right,
                         osgText::KerningType type) override {
        osgText::Font& source = sourceOf(left);
        return &source == &sourceOf(right) ? source.getKerning(resolution, left, right, type) : osg::Vec2();
    }

    /// The font itself, and those that have helped out so far.
    std::set<osg::ref_ptr<osgText::Font>> used() const {
        std::set<osg::ref_ptr<osgText::Font>> fonts{m_own};
        for (auto const& [letter, font] : m_sources)
            fonts.insert(font);
        return fonts;
    }

private:
    osgText::Font& sourceOf(unsigned int letter) {
        if (letter < endOfAscii)
            return *m_own; // the most letters by far: the list of fonts need not be loaded
        auto const known = m_sources.find(letter);
        return known != m_sources.end() ? *known->second : *(m_sources[letter] = findSource(letter));
    }

    osg::ref_ptr<osgText::Font> findSource(unsigned int letter) {
        if (!m_ownPattern || has(m_ownPattern.get(), letter))
            return m_own;
        for (FcPattern const* const other : others())
            if (has(other, letter) && isDrawable(other))
                if (osg::ref_ptr<osgText::Font> const font = readListed(other, m_own->getMaxAnisotropy()))
                    return font;
        tellOfLacking(letter);
        return m_own;
    }

    std::span<FcPattern*> others() {
        if (!m_others) {
            Pattern const like(FcPatternDuplicate(m_ownPattern.get()));
            FcPatternDel(like.get(), FC_CHARSET); // not those that have most of its letters
            FcPatternDel(like.get(), FC_LANG);    // the user's stands for those that it can write
            FcConfigSubstitute(nullptr, like.get(), FcMatchPattern);
            FcDefaultSubstitute(like.get());
            FcResult result = FcResultMatch;
            m_others.reset(FcFontSort(nullptr, like.get(), FcFalse, nullptr, &result));
        }
        return m_others ? std::span(m_others->fonts, std::size_t(m_others->nfont)) : std::span<FcPattern*>();
    }

    osg::ref_ptr<osgText::Font> m_own;
    Pattern m_ownPattern; ///< null where the system's list cannot read the file
    FontSet m_others;
    std::map<unsigned int, osg::ref_ptr<osgText::Font>> m_sources; ///< of letters beyond ASCII
};

FallbackFont::FallbackFont(osg::ref_ptr<osgText::Font> const& own) : FallbackFont(new Sources(own)) {
    setMaxAnisotropy(own->getMaxAnisotropy());
}

FallbackFont::FallbackFont(Sources* sources) : osgText::Font(sources), m_sources(sources) {}

FallbackFont::~FallbackFont() = default;

osg::ref_ptr<osgText::Font> FallbackFont::unfiltered() {
    constexpr float none = 1;
    if (getMaxAnisotropy() == none)
        return this;
    if (!m_unfiltered) {
        osg::ref_ptr<osgText::Font> const again = readFontHere(getFileName()).thing;
        if (!again)
            return this;
        again->setMaxAnisotropy(none);
        m_unfiltered = new FallbackFont(again);
    }
    return m_unfiltered;
}

void FallbackFont::resizeGLObjectBuffers(unsigned int count) {
    for (auto const& font : m_sources->used())
        font->resizeGLObjectBuffers(count);
    if (m_unfiltered)
        m_unfiltered->resizeGLObjectBuffers(count);
    osgText::Font::resizeGLObjectBuffers(count);
}

void FallbackFont::releaseGLObjects(osg::State* state) const {
    for (auto const& font : m_sources->used())
        font->releaseGLObjects(state);
    for (auto const& programs : getCachedStateSets())
        programs->releaseGLObjects(state);
    if (m_unfiltered)
        m_unfiltered->releaseGLObjects(state);
    osgText::Font::releaseGLObjects(state);
}

} // namespace hyxOSG
