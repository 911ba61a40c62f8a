// A laser scanner made of depth pictures.
#pragma once

#include "platform/hyx/values/vec3f.h"
#include "platform/hyx/values/vector_pod.h"
#include "platform/hyxOSG/capture/render_to_image.h"

namespace hyxOSG {

/// A lidar that takes its distances from the depth buffer: one beam through the middle of each pixel.
///
/// View and projection are those of the target; a perspective of 60 degrees from 0.1 to 100 m unless set. Beams that
/// hit nothing before the far plane give no point.
class SimpleDepthBufferLidar : public RenderToImage {
public:
    /// \param horizontalBeams beams in a row, 1 to 16384.
    /// \param verticalBeams rows, 1 to 16384.
    /// \param worldCoordinates points in the world's frame (default), else in the sensor's: x to the right, y up, z
    /// backwards.
    SimpleDepthBufferLidar(hyx::UInt horizontalBeams, hyx::UInt verticalBeams, bool worldCoordinates = true);

    /// The points of the last drawn frame, in metres, row by row from the lowest, each from the left. Owned by the
    /// lidar and overwritten by the next call.
    hyx::VectorPOD<hyx::Vec3f> const& getScan();

protected:
    ~SimpleDepthBufferLidar() override;
    void finishFrame(osg::RenderInfo& renderInfo) override;

private:
    bool m_worldCoordinates;
    /// From pixel centre and depth, -1 to 1, to the point; of the last drawn frame.
    osg::Matrixd m_imageToPoint;
    bool m_scanOutdated = false;
    hyx::VectorPOD<hyx::Vec3f> m_scan;
};

} // namespace hyxOSG
