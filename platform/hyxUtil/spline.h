// Curves through points.
#pragma once

#include "platform/hyx/objects/object.h"
#include "platform/hyx/values/types.h"
#include "platform/hyx/values/vec3.h"
#include "platform/hyx/values/vec3_vector.h"

#include <vector>

namespace hyxUtil {

/// A curve through a list of control points, in metres.
/// The parameter runs from 0 at the first point to `getNumPoints() - 1` at the last one; whole values are the points
/// themselves. This class joins the points by straight lines; `CubicSpline` and `HermiteSpline` are smooth.
class Spline : public hyx::Object {
public:
    Spline() = default;

    /// Appends a control point. Throws `std::invalid_argument` for a point that is not finite.
    void add(hyx::Vec3 const& point);
    /// Moves the control point at `index`. Throws `std::out_of_range` past the end.
    void setPoint(hyx::Index index, hyx::Vec3 const& point);
    /// Replaces all control points.
    void setPoints(hyx::Vec3Vector const& points);
    /// Removes all control points.
    void clear();

    /// The number of control points.
    hyx::UInt getNumPoints() const;
    /// The control point at `index`. Throws `std::out_of_range` past the end.
    hyx::Vec3 getPoint(hyx::Index index) const;

    /// The position at `parameter`, which is clamped to the curve. An empty spline gives the origin.
    hyx::Vec3 evaluate(hyx::Real parameter) const;
    /// The unit direction at `parameter`; the X axis where the curve has no direction (fewer than two different
    /// points).
    hyx::Vec3 getTangent(hyx::Real parameter) const;
    /// The curvature (1/m) at `parameter`, 0 for straight parts.
    hyx::Real getCurvature(hyx::Real parameter) const;
    /// The length of the whole curve in metres.
    hyx::Real getLength() const;

    /// Rises with every change, so that who draws the curve knows when to draw it anew.
    hyx::UInt getRevision() const;

protected:
    ~Spline() override = default;

    /// Value, first and second derivative inside the segment that starts at point `segment`, at `t` in [0, 1].
    struct Sample {
        hyx::Vec3 position;
        hyx::Vec3 first;
        hyx::Vec3 second;
    };

    virtual Sample sampleSegment(hyx::Index segment, hyx::Real t) const;

    /// Called before sampling after the points have changed.
    virtual void prepare() const {}

    std::vector<hyx::Vec3> m_points;

private:
    Sample sample(hyx::Real parameter) const;
    void change();

    hyx::UInt m_revision = 1;
    mutable hyx::UInt m_prepared = 0;
};

/// The natural cubic spline: position, direction and curvature are continuous, the curvature is 0 at both ends.
/// Moving one point changes the whole curve a little.
class CubicSpline : public Spline {
public:
    CubicSpline() = default;

protected:
    ~CubicSpline() override = default;
    Sample sampleSegment(hyx::Index segment, hyx::Real t) const override;
    void prepare() const override;

private:
    mutable std::vector<hyx::Vec3> m_secondDerivatives;
};

/// A cubic curve whose direction at a point follows its two neighbours; moving one point changes four segments at most.
class HermiteSpline : public Spline {
public:
    /// `tension` 0 gives the roundest curve, 1 straight lines between the points.
    explicit HermiteSpline(hyx::Real tension = 0);

    /// The tension, from 0 to 1.
    hyx::Real getTension() const;

protected:
    ~HermiteSpline() override = default;
    Sample sampleSegment(hyx::Index segment, hyx::Real t) const override;

private:
    hyx::Vec3 direction(hyx::Index point) const;

    hyx::Real m_tension;
};

} // namespace hyxUtil
