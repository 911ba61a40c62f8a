// The base of Python input listeners; its overridable methods are called through the base class.
#include "binding/vocabulary/rows.h"
#include "binding/vocabulary/sequences.h"
#include "modules/hyxOSG/picking/gui_event_listener_director.h"

namespace swig {
template <>
struct traits<hyxCollide::LocalGeometryContact> {
    static constexpr char type_name[] = "hyxCollide::LocalGeometryContact";
};

template <>
struct traits<hyxCollide::LocalGeometryContactVector> {
    static constexpr char type_name[] = "hyxCollide::LocalGeometryContactVector";
};
} // namespace swig

namespace vocabulary {
// Scripts have contacts in lists.
template <>
inline constexpr Conversion const* sequence_conversion<hyxCollide::LocalGeometryContactVector> =
    &sequence_argument<hyxCollide::LocalGeometryContactVector>;
} // namespace vocabulary

namespace {

constexpr Declared gui_event_listener_rows[] = {
    FUNCTION_BY_COUNT(new_GuiEventListener,
                      NEW_DIRECTOR(hyxOSG::GuiEventListener, SwigDirector_GuiEventListener,
                                   (hyxSDK::GuiEventListener::ActivationMask), hyxSDK::GuiEventListener::DEFAULT)),
    FUNCTION(GuiEventListener_intersect,
             METHOD(hyxOSG::GuiEventListener, intersect, (float, float, osg::Camera const*, bool), false)),
    FUNCTION(GuiEventListener_findIntersectGeometryIndex, METHOD(hyxOSG::GuiEventListener, findIntersectGeometryIndex,
                                                                 (hyxCollide::LocalGeometryContactVector const&))),
    FUNCTION(GuiEventListener_getNearFarPoints, METHOD(hyxOSG::GuiEventListener, getNearFarPoints,
                                                       (osg::Camera const*, hyx::Vec3&, hyx::Vec3&, float, float))),
    FUNCTION(disown_GuiEventListener, DISOWN(hyxOSG::GuiEventListener)),
    REGISTER(hyxOSG::GuiEventListener, GuiEventListener),
    INIT(GuiEventListener),
};

} // namespace

ROWS(gui_event_listener_rows);
