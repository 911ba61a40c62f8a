// Lends an overridden function to a renderer, safely beyond its own end.
#include "platform/hyxOSG/renderers/lidar_output_renderer_color_function_callback.h"

namespace hyxOSG {

namespace {

osg::Vec4f shadeOfGray(float intensity) {
    return {intensity, intensity, intensity, 1};
}

// Copies of the function outlive a callback that was deleted too early: they then find null here.
struct CallOverride {
    std::shared_ptr<LidarOutputRendererColorFunctionCallback*> callback;

    osg::Vec4f operator()(float intensity) const {
        return *callback ? (*callback)->getLidarPointColor(intensity) : shadeOfGray(intensity);
    }
};

} // namespace

LidarOutputRendererColorFunctionCallback::LidarOutputRendererColorFunctionCallback()
    : m_colorFunction(CallOverride{std::make_shared<LidarOutputRendererColorFunctionCallback*>(this)}) {}

LidarOutputRendererColorFunctionCallback::~LidarOutputRendererColorFunctionCallback() {
    if (auto* const function = m_colorFunction.target<CallOverride>())
        *function->callback = nullptr;
}

osg::Vec4f LidarOutputRendererColorFunctionCallback::getLidarPointColor(float intensity) {
    return shadeOfGray(intensity);
}

LidarOutputRenderer::IntensityState::ColorFunc* LidarOutputRendererColorFunctionCallback::getColorFunction() {
    return &m_colorFunction;
}

} // namespace hyxOSG
