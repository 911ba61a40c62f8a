#include "platform/hyxOSG/lidar_output_renderer_color_function_callback.h"

namespace hyxOSG {

LidarOutputRendererLegendPoint::LidarOutputRendererLegendPoint() : intensity(0), color(1, 1, 1, 1) {}

LidarOutputRendererLegendPoint::LidarOutputRendererLegendPoint(float intensity, osg::Vec4 color)
    : intensity(intensity), color(color)
{
}

LidarOutputRendererColorFunctionCallback::LidarOutputRendererColorFunctionCallback()
    : m_colorFunction([this](float intensity) { return getLidarPointColor(intensity); })
{
}

LidarOutputRendererColorFunctionCallback::~LidarOutputRendererColorFunctionCallback() = default;

osg::Vec4f LidarOutputRendererColorFunctionCallback::getLidarPointColor(float intensity)
{
    return {intensity, intensity, intensity, 1};
}

LidarOutputRenderer::IntensityState::ColorFunc * LidarOutputRendererColorFunctionCallback::getColorFunction()
{
    return &m_colorFunction;
}

}
