// Writes texts of the scene graph, those that models bring along, too.
#include "platform/osg/texts.h"

#include "reference/machinery/text/fonts.h"
#include "reference/machinery/text/lettering.h"
#include "reference/machinery/text/text_length.h"

namespace osg {

osgText::Text* createLettering() {
    osg::ref_ptr<hyxOSG::Lettering> text = new hyxOSG::Lettering;
    text->setTypeface(hyxOSG::findFont(hyxOSG::usualFont));
    return text.release();
}

void writeText(osgText::TextBase& text, std::string const& written) {
    if (auto* const lettering = dynamic_cast<hyxOSG::Lettering*>(&text))
        lettering->write(written);
    else
        text.setText(osgText::String(hyxOSG::requireDrawable(written), osgText::String::ENCODING_UTF8));
}

std::string writtenText(osgText::TextBase const& text) {
    auto const* const lettering = dynamic_cast<hyxOSG::Lettering const*>(&text);
    return lettering ? lettering->written() : text.getText().createUTF8EncodedString();
}

} // namespace osg
