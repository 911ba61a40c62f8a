// What tests need of the library and scripts do not get: objects that only the library makes.
#include "wrappers/vocabulary/rows.h"

#include "platform/hyxOSG/panel.h"

#include <osg/Group>

namespace {

hyxOSG::Panel *makePanel(osg::Group *hud, void const *key) { return new hyxOSG::Panel(hud, key); }
void deletePanel(hyxOSG::Panel *panel) { delete panel; }

constexpr Declared functions[] = {
    FUNCTION(makePanel, FREE(makePanel, (osg::Group *, void const *))),
    FUNCTION(deletePanel, FREE(deletePanel, (hyxOSG::Panel *))),
};

} // namespace

ROWS(functions);
