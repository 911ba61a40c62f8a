// Texts of the scene graph, written and read in the order in which they are read aloud.
#pragma once

#include <string>

namespace osgText {
class Text;
class TextBase;
} // namespace osgText

namespace osg {

/// An empty text in the usual font, which takes letters that this lacks from other ones. Nothing holds it until the
/// caller does.
osgText::Text* createLettering();

/// Changes what is shown, UTF-8.
/// \throws std::invalid_argument for more than 50000 bytes
void writeText(osgText::TextBase& text, std::string const& written);

/// What was written, UTF-8.
std::string writtenText(osgText::TextBase const& text);

} // namespace osg
