// Writes texts of the scene graph, those that models bring along, too.
#include "platform/osg/texts.h"

#include "reference/machinery/text/drawn_text.h"
#include "reference/machinery/text/fonts.h"
#include "reference/machinery/text/lettering.h"

namespace osg {

osgText::Text* createLettering() {
    osg::ref_ptr<hyxOSG::Lettering> text = new hyxOSG::Lettering;
    text->setFont(hyxOSG::findFont(hyxOSG::usualFont));
    return text.release();
}

void writeText(osgText::TextBase& text, std::string const& written) {
    if (auto* const lettering = dynamic_cast<hyxOSG::Lettering*>(&text))
        lettering->write(written);
    else
        text.setText(hyxOSG::drawnText(written));
}

std::string writtenText(osgText::TextBase const& text) {
    auto const* const lettering = dynamic_cast<hyxOSG::Lettering const*>(&text);
    return lettering ? lettering->written() : text.getText().createUTF8EncodedString();
}

} // namespace osg
