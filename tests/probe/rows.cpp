// What tests need of the library and scripts do not get: objects that only the library makes, and reference counts.
#include "wrappers/vocabulary/rows.h"

#include "platform/hyxOSG/panel.h"

#include <osg/Group>

namespace {

hyxOSG::Panel *makePanel(osg::Group *hud, void const *key) { return new hyxOSG::Panel(hud, key); }
void deletePanel(hyxOSG::Panel *panel) { delete panel; }
int nodeReferenceCount(osg::Referenced *object) { return object ? object->referenceCount() : 0; }
int objectReferenceCount(hyx::Referenced *object) { return object ? object->getReferenceCount() : 0; }

constexpr Declared functions[] = {
    FUNCTION(makePanel, FREE(makePanel, (osg::Group *, void const *))),
    FUNCTION(deletePanel, FREE(deletePanel, (hyxOSG::Panel *))),
    FUNCTION(nodeReferenceCount, FREE(nodeReferenceCount, (osg::Referenced *))),
    FUNCTION(objectReferenceCount, FREE(objectReferenceCount, (hyx::Referenced *))),
};

} // namespace

ROWS(functions);
