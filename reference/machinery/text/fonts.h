// Fonts by name or file.
#pragma once

#include "reference/machinery/text/typeface.h"

#include <osg/State>

#include <string>

namespace hyxOSG {

/// That of texts until a script chooses another.
constexpr char const* usualFont = "DejaVuSans";

/// The font of a name, as the system's font list knows it, or of a file; null when there is none. A font is read once.
/// Letters that it lacks are taken from others.
osg::ref_ptr<Typeface> findFont(std::string const& name);

/// The same for a script, which is warned where there is none, or another one stands for it.
osg::ref_ptr<Typeface> wantedFont(std::string const& name);

/// Gives back what letters hold in a context that ends, or in all. Texts that are gone, or have changed, cannot tell
/// them.
void releaseLetters(osg::State* state);

} // namespace hyxOSG
