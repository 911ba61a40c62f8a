// Fonts that take the letters they lack from other ones.
#pragma once

#include "reference/machinery/faces/face.h"

#include <map>
#include <memory>
#include <span>
#include <string_view>

typedef struct _FcPattern FcPattern;
typedef struct _FcFontSet FcFontSet;

namespace hyxOSG {

/// A font, and the installed ones that help it out: in the order in which the system's list finds them alike in family
/// and style, and fit for the user's language. A letter that none has is told of with the package to install, once a
/// package.
class Typeface : public osg::Referenced {
public:
    explicit Typeface(osg::ref_ptr<Face> own);

    /// The first face that has all of some letters; null when there is none.
    Face* find(std::u32string_view letters);

    /// The face for a letter and the marks on it, or for the letter alone.
    Face& choose(std::u32string_view cluster);

private:
    struct Destroy {
        void operator()(FcPattern* pattern) const;
        void operator()(FcFontSet* fonts) const;
    };

    ~Typeface() override;

    std::span<FcPattern*> others();

    osg::ref_ptr<Face> m_own;
    std::unique_ptr<FcPattern, Destroy> m_pattern; ///< null where the system's list cannot read the file
    std::unique_ptr<FcFontSet, Destroy> m_others;
    bool m_listed = false;
    std::map<std::u32string, Face*, std::less<>> m_found; ///< beyond the own face
};

/// Whether a letter changes others instead of leaving ink of its own: joiners, marks of order, variations, spaces.
bool leavesInk(unsigned int letter);

} // namespace hyxOSG
