// The base of Python input listeners; its overridable methods are called through the base class.
#include "wrappers/vocabulary/rows.h"

#include "directors/gui_event_listener_director.h"

namespace {

constexpr Declared functions[] = {
    FUNCTION_BY_COUNT(new_GuiEventListener,
                      NEW_DIRECTOR(hyxOSG::GuiEventListener, SwigDirector_GuiEventListener,
                                   (hyxSDK::GuiEventListener::ActivationMask), hyxSDK::GuiEventListener::DEFAULT)),
    FUNCTION(GuiEventListener_intersect,
             METHOD(hyxOSG::GuiEventListener, intersect, (float, float, osg::Camera const *, bool), false)),
    FUNCTION(GuiEventListener_findIntersectGeometryIndex,
             METHOD(hyxOSG::GuiEventListener, findIntersectGeometryIndex, (hyxCollide::LocalGeometryContactVector const &))),
    FUNCTION(GuiEventListener_getNearFarPoints,
             METHOD(hyxOSG::GuiEventListener, getNearFarPoints,
                    (osg::Camera const *, hyx::Vec3 &, hyx::Vec3 &, float, float))),
    FUNCTION(disown_GuiEventListener, DISOWN(hyxOSG::GuiEventListener)),
    REGISTER(hyxOSG::GuiEventListener, GuiEventListener),
    INIT(GuiEventListener),
};

} // namespace

ROWS(functions);
