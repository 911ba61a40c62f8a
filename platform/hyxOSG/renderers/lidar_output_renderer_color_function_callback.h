// A colour function of lidar hit points that can be overridden.
#pragma once

#include "platform/hyxOSG/renderers/lidar_output_renderer.h"

namespace hyxOSG {

/// Its colour function calls its own virtual getLidarPointColor. Give it to
/// LidarOutputRenderer::setIntensityColorFunctionReplacement and keep it alive as long as it is used there; a renderer
/// whose callback is gone draws shades of gray.
class LidarOutputRendererColorFunctionCallback {
public:
    /// Makes the colour function, which refers to this object.
    LidarOutputRendererColorFunctionCallback();
    virtual ~LidarOutputRendererColorFunctionCallback();

    // The colour function holds this object's address.
    LidarOutputRendererColorFunctionCallback(LidarOutputRendererColorFunctionCallback const&) = delete;
    LidarOutputRendererColorFunctionCallback& operator=(LidarOutputRendererColorFunctionCallback const&) = delete;

    /// The colour of a hit point. Not overridden: shades of gray, black at intensity 0, white at 1.
    /// \param intensity the scaled intensity
    virtual osg::Vec4f getLidarPointColor(float intensity);

    /// The function that calls getLidarPointColor of this object; owned by this object.
    LidarOutputRenderer::IntensityState::ColorFunc* getColorFunction();

private:
    LidarOutputRenderer::IntensityState::ColorFunc m_colorFunction;
};

} // namespace hyxOSG
