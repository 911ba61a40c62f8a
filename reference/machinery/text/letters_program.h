// The shader program of letters.
#pragma once

#include <osg/StateSet>

namespace hyxOSG {

/// What all letters are drawn with: coverage from texture unit 0 in the current colour; the colour alone where texture
/// coordinates are negative.
osg::ref_ptr<osg::StateSet> lettersState();

} // namespace hyxOSG
