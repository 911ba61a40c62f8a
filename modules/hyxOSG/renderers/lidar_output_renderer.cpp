// Rows of LidarOutputRenderer.
#include "platform/hyxOSG/renderers/lidar_output_renderer.h"

#include "binding/vocabulary/rows.h"
#include "modules/hyxOSG/renderers/legend_arguments.h"
#include "modules/hyxOSG/renderers/lidar_color_director.h"
#include "platform/hyxSensor/lidar.h"

namespace {

// The renderer keeps the Python object of a derived callback alive.
void color_by(hyxOSG::LidarOutputRenderer& renderer, hyxOSG::LidarOutputRendererColorFunctionCallback* callback) {
    if (auto* director = dynamic_cast<SwigDirector_LidarOutputRendererColorFunctionCallback*>(callback))
        renderer.setIntensityColorFunction(director->swig_keeping_color_function());
    else
        renderer.setIntensityColorFunctionReplacement(callback);
}

constexpr Declared lidar_output_renderer_rows[] = {
    FUNCTION(new_LidarOutputRenderer, NEW(hyxOSG::LidarOutputRenderer, (hyxSensor::Lidar const*, bool), false),
             NEW(hyxOSG::LidarOutputRenderer, (hyxOSG::LidarOutputRenderer const&))),
    FUNCTION(delete_LidarOutputRenderer, DELETE(hyxOSG::LidarOutputRenderer)),
    FUNCTION(LidarOutputRenderer_setHitPointScale, METHOD(hyxOSG::LidarOutputRenderer, setHitPointScale, (float))),
    FUNCTION(LidarOutputRenderer_getHitPointScale, METHOD(hyxOSG::LidarOutputRenderer, getHitPointScale, () const)),
    FUNCTION(LidarOutputRenderer_setIntensityScale, METHOD(hyxOSG::LidarOutputRenderer, setIntensityScale, (float))),
    FUNCTION(LidarOutputRenderer_getIntensityScale, METHOD(hyxOSG::LidarOutputRenderer, getIntensityScale, () const)),
    FUNCTION(LidarOutputRenderer_setHitPointLifetime,
             METHOD(hyxOSG::LidarOutputRenderer, setHitPointLifetime, (float))),
    FUNCTION(LidarOutputRenderer_getHitPointLifetime,
             METHOD(hyxOSG::LidarOutputRenderer, getHitPointLifetime, () const)),
    FUNCTION(LidarOutputRenderer_setHitPointsAlwaysOnTop,
             METHOD(hyxOSG::LidarOutputRenderer, setHitPointsAlwaysOnTop, (bool))),
    FUNCTION(LidarOutputRenderer_isAlwaysRenderedOnTop,
             METHOD(hyxOSG::LidarOutputRenderer, isAlwaysRenderedOnTop, () const)),
    FUNCTION(LidarOutputRenderer_setIntensityColorFunctionFromMode,
             METHOD(hyxOSG::LidarOutputRenderer, setIntensityColorFunctionFromMode,
                    (hyxOSG::LidarOutputRenderer::IntensityState::Mode))),
    FUNCTION(
        LidarOutputRenderer_setIntensityColorFunctionFromInterpolation,
        METHOD(hyxOSG::LidarOutputRenderer, setIntensityColorFunctionFromInterpolation, (osg::Vec4, osg::Vec4, float))),
    FUNCTION(LidarOutputRenderer_setIntensityColorFunctionFromLegend,
             METHOD(hyxOSG::LidarOutputRenderer, setIntensityColorFunctionFromLegend,
                    (std::vector<hyxOSG::LidarOutputRendererLegendPoint> const&, float))),
    FUNCTION(LidarOutputRenderer_setIntensityColorFunction,
             METHOD(hyxOSG::LidarOutputRenderer, setIntensityColorFunction,
                    (hyxOSG::LidarOutputRenderer::IntensityState::ColorFunc)),
             ADAPTER(hyxOSG::LidarOutputRenderer, setIntensityColorFunctionReplacement, color_by,
                     (hyxOSG::LidarOutputRendererColorFunctionCallback*))),
    REGISTER(hyxOSG::LidarOutputRenderer, LidarOutputRenderer),
    INIT(LidarOutputRenderer),
};

} // namespace

ROWS(lidar_output_renderer_rows);
