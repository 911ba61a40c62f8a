// The panel on the head-up display, which only the library makes.
#include "platform/hyxOSG/decoration/panel.h"

#include "binding/vocabulary/rows.h"

namespace {

constexpr Declared panel_rows[] = {
    FUNCTION(Panel_setPosition, METHOD(hyxOSG::Panel, setPosition, (hyx::Vec2 const&))),
    FUNCTION(Panel_getPosition, METHOD(hyxOSG::Panel, getPosition, () const)),
    FUNCTION(Panel_setSize, METHOD(hyxOSG::Panel, setSize, (hyx::Vec2 const&))),
    FUNCTION(Panel_getSize, METHOD(hyxOSG::Panel, getSize, () const)),
    FUNCTION(Panel_setColor, METHOD(hyxOSG::Panel, setColor, (hyx::Vec4 const&))),
    FUNCTION(Panel_getColor, METHOD(hyxOSG::Panel, getColor, () const)),
    FUNCTION(Panel_uninitialize, METHOD(hyxOSG::Panel, uninitialize, (osg::Group*))),
    FUNCTION(Panel_isValid, METHOD(hyxOSG::Panel, isValid, () const)),
    FUNCTION(Panel_update, METHOD(hyxOSG::Panel, update, ())),
    FUNCTION(Panel_match, METHOD(hyxOSG::Panel, match, (void const*) const)),
    REGISTER(hyxOSG::Panel, Panel),
};

} // namespace

ROWS(panel_rows);
