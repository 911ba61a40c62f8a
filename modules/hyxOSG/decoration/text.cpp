// The text node.
#include "platform/hyxOSG/decoration/text.h"

#include "binding/vocabulary/rows.h"

namespace {

constexpr Declared text_rows[] = {
    FUNCTION(new_Text, NEW(hyxOSG::Text, ()),
             NEW(hyxOSG::Text, (hyx::String const&, hyx::Vec3 const&, hyx::Vec4 const&), hyx::Vec3(),
                 hyx::Vec4(1, 1, 1, 1))),
    FUNCTION(delete_Text, DELETE(hyxOSG::Text)),
    FUNCTION(Text_setFont, METHOD(hyxOSG::Text, setFont, (hyx::String const&))),
    FUNCTION(Text_setCharacterSize, METHOD(hyxOSG::Text, setCharacterSize, (float))),
    FUNCTION(Text_setColor, METHOD(hyxOSG::Text, setColor, (hyx::Vec4f const&))),
    FUNCTION(Text_setPosition, METHOD(hyxOSG::Text, setPosition, (hyx::Vec3 const&))),
    FUNCTION(Text_setAxisAlignment, METHOD(hyxOSG::Text, setAxisAlignment, (hyxOSG::Text::AxisAlignment))),
    FUNCTION(Text_setBackdropType, METHOD(hyxOSG::Text, setBackdropType, (hyxOSG::Text::BackdropType))),
    FUNCTION(Text_setDrawMode, METHOD(hyxOSG::Text, setDrawMode, (hyxOSG::Text::DrawModeMask))),
    FUNCTION(Text_setText, METHOD(hyxOSG::Text, setText, (hyx::String const&))),
    FUNCTION(Text_setAlignment, METHOD(hyxOSG::Text, setAlignment, (hyxOSG::Text::AlignmentType))),
    REGISTER(hyxOSG::Text, Text),
    INIT(Text),
    FUNCTION(Text_reference, FREE(hyxOSG::Text_reference, (hyxOSG::Text*))),
    FUNCTION(Text_unreference, FREE(hyxOSG::Text_unreference, (hyxOSG::Text*))),
};

} // namespace

ROWS(text_rows);
