// The shader program of letters.
#pragma once

#include <osg/StateSet>

namespace hyxOSG {

/// What letters are drawn with: coverage from texture unit 0 in the current colour; the colour alone where texture
/// coordinates are negative. Slanting ones are read along the longer side of what a pixel covers.
osg::ref_ptr<osg::StateSet> lettersState(bool slanting);

/// Gives back the programs of a context that ends, or of all.
void releaseLettersPrograms(osg::State* state);

} // namespace hyxOSG
