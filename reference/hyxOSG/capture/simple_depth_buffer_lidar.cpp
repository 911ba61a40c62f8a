// From depths to points.

#include "platform/hyxOSG/capture/simple_depth_buffer_lidar.h"

#include <osg/RenderInfo>

namespace hyxOSG {

SimpleDepthBufferLidar::SimpleDepthBufferLidar(hyx::UInt horizontalBeams, hyx::UInt verticalBeams,
                                               bool worldCoordinates)
    : RenderToImage(horizontalBeams, verticalBeams, DEPTH_BUFFER, 0, DEPTH_COMPONENT),
      m_worldCoordinates(worldCoordinates) {}

SimpleDepthBufferLidar::~SimpleDepthBufferLidar() = default;

void SimpleDepthBufferLidar::finishFrame(osg::RenderInfo& renderInfo) {
    RenderToImage::finishFrame(renderInfo);
    osg::Camera const& camera = *getCamera();
    bool const planesAsSet = camera.getComputeNearFarMode() == osg::CullSettings::DO_NOT_COMPUTE_NEAR_FAR;
    // With computed planes the projection that was drawn with is known to the drawing state alone.
    osg::Matrixd const projection =
        planesAsSet ? camera.getProjectionMatrix() : osg::Matrixd(renderInfo.getState()->getProjectionMatrix());
    osg::Matrixd const toClip = m_worldCoordinates ? camera.getViewMatrix() * projection : projection;
    m_imageToPoint = osg::Matrixd::inverse(toClip);
    m_scanOutdated = true;
}

hyx::VectorPOD<hyx::Vec3f> const& SimpleDepthBufferLidar::getScan() {
    if (!m_scanOutdated) {
        return m_scan;
    }
    m_scanOutdated = false;
    m_scan.clear();
    int const width = getImage()->s();
    int const height = getImage()->t();
    auto const* depth = reinterpret_cast<float const*>(getImage()->data());
    for (int row = 0; row < height; ++row) {
        double const y = (2 * row + 1.0) / height - 1;
        for (int column = 0; column < width; ++column, ++depth) {
            if (*depth >= 1) {
                continue;
            }
            double const x = (2 * column + 1.0) / width - 1;
            osg::Vec3d const point = osg::Vec3d(x, y, 2 * double(*depth) - 1) * m_imageToPoint;
            m_scan.push_back(hyx::Vec3f(float(point.x()), float(point.y()), float(point.z())));
        }
    }
    return m_scan;
}

} // namespace hyxOSG
