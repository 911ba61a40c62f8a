// Fonts by name or file.
#pragma once

#include <osgText/Font>

#include <string>

namespace hyxOSG {

/// That of texts until a script chooses another.
constexpr char const* usualFont = "DejaVuSans";

/// The font of a name, as the system's font list knows it, or of a file; null when there is none. A font is read once.
/// Letters that it lacks are taken from others.
osg::ref_ptr<osgText::Font> findFont(std::string const& name);

/// The same for a script, which is warned where there is none.
osg::ref_ptr<osgText::Font> wantedFont(std::string const& name);

/// Gives back what fonts hold in a context that ends, or in all. Texts that are gone, or have changed, cannot tell
/// them.
void releaseFonts(osg::State* state);

} // namespace hyxOSG
