// Texts in the order and the forms in which their letters are drawn.
#pragma once

#include <osgText/String>

#include <string>

namespace hyxOSG {

/// The letters of a text in UTF-8 from left to right: Hebrew and Arabic lines are turned round, and Arabic letters
/// joined, by the rules of Unicode. Throws std::invalid_argument for a text too long to be drawn.
osgText::String drawnText(std::string const& text);

} // namespace hyxOSG
