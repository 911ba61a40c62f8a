// Curves as smooth tubes, computed on the graphics card.
#pragma once

#include "platform/hyx/values/types.h"
#include "platform/hyx/values/vec4f.h"
#include "platform/hyx/values/vector.h"
#include "platform/hyxSDK/event_listener.h"
#include "platform/hyxUtil/spline.h"

#include <memory>

namespace osg {
class Group;
} // namespace osg

namespace hyxOSG {

/// Draws a spline as a round tube, which the graphics processor builds from the points of the curve.
/// Changes of the spline show by themselves in the next frame, or at once after `update`.
class SplineRenderer : public hyxSDK::EventListener {
public:
    /// Draws `spline` under `parent`. A null spline draws nothing until `setSplineModel`.
    /// Throws `std::invalid_argument` for a null `parent`.
    SplineRenderer(hyxUtil::Spline* spline, osg::Group* parent);

    /// Draws the curve anew.
    void update();
    /// Draws the curve anew with one value from 0 to 1 for each control point: the colour goes from the renderer's own
    /// to red. Throws `std::invalid_argument` for another number of values than points.
    void update(hyx::RealVector const& values);

    /// Draws another spline from now on; null draws nothing.
    void setSplineModel(hyxUtil::Spline* spline);
    hyxUtil::Spline* getSplineModel();
    hyxUtil::Spline const* getSplineModel() const;
    /// Radius of the tube in metres, 0.02 at first. Throws `std::invalid_argument` unless above 0.
    void setRadius(double radius);
    double getRadius() const;
    /// How many straight pieces a metre of the curve is drawn with, 10 at first. Throws `std::invalid_argument` unless
    /// above 0.
    void setNumSegmentsPerUnitLength(double count);
    double getNumSegmentsPerUnitLength() const;
    /// Colour of the tube, light grey at first.
    void setColor(hyx::Vec4f const& color);
    hyx::Vec4f getColor() const;

    /// Takes the tube out of the scene; `update` then draws nothing any more.
    void removeNotification() override;

protected:
    ~SplineRenderer() override;

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxOSG
