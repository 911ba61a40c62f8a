// What the proxies can choose about the quality of pictures beyond the visualization library's own module.
#include "modules/osg/scene_graph_rows.h"
#include "platform/hyxOSG/application/example_application.h"
#include "platform/hyxOSG/decoration/scene_decorator.h"

namespace {

constexpr Declared picture_quality_rows[] = {
    FUNCTION(ExampleApplication_setNumSamples, METHOD(hyxOSG::ExampleApplication, setNumSamples, (int))),
    FUNCTION(ExampleApplication_getNumSamples, METHOD(hyxOSG::ExampleApplication, getNumSamples, () const)),
    FUNCTION(SceneDecorator_setShadowMapSize, METHOD(hyxOSG::SceneDecorator, setShadowMapSize, (int))),
    FUNCTION(SceneDecorator_getShadowMapSize, METHOD(hyxOSG::SceneDecorator, getShadowMapSize, () const)),
    FUNCTION(SceneDecorator_setShadowCasterLimit, METHOD(hyxOSG::SceneDecorator, setShadowCasterLimit, (int))),
    FUNCTION(SceneDecorator_getShadowCasterLimit, METHOD(hyxOSG::SceneDecorator, getShadowCasterLimit, () const)),
    FUNCTION(SceneDecorator_setEnableSkyLight, METHOD(hyxOSG::SceneDecorator, setEnableSkyLight, (bool))),
    FUNCTION(SceneDecorator_getEnableSkyLight, METHOD(hyxOSG::SceneDecorator, getEnableSkyLight, () const)),
    FUNCTION(SceneDecorator_setEnableContactShade, METHOD(hyxOSG::SceneDecorator, setEnableContactShade, (bool))),
    FUNCTION(SceneDecorator_getEnableContactShade, METHOD(hyxOSG::SceneDecorator, getEnableContactShade, () const)),
};

} // namespace

ROWS(picture_quality_rows);
