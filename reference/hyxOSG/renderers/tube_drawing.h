// Round tubes along curves.
#pragma once

#include "platform/hyx/values/quat.h"
#include "platform/hyx/values/vec3.h"
#include "platform/hyx/values/vector.h"
#include "platform/hyxUtil/spline.h"

#include <osg/Node>
#include <osg/Vec4f>

#include <vector>

namespace hyxOSG {

/// A place on a tube.
struct TubeStation {
    hyx::Vec3 position;
    hyx::Quat
        rotation;     ///< takes Z to the direction of the tube; turns as little as it can from one station to the next
    double value = 0; ///< 0 to 1: how red
};

/// Stations along a spline, `perMetre` on each metre of it and at least one for each part. `values`, one for each
/// control point, are blended between them; without values all stations have 0. A curve without length has no stations.
std::vector<TubeStation> sampleTube(hyxUtil::Spline const& spline, double perMetre, hyx::RealVector const& values);

/// The colour of a station: from the tube's own to red.
osg::Vec4f shiftToRed(osg::Vec4f const& color, double value);

/// A way to draw a tube.
class TubeDrawing {
public:
    virtual ~TubeDrawing() = default;
    virtual osg::Node* node() = 0;
    /// Draws a tube of `radius` metres through the stations; none draws nothing.
    virtual void show(std::vector<TubeStation> const& stations, double radius, osg::Vec4f const& color) = 0;
};

} // namespace hyxOSG
