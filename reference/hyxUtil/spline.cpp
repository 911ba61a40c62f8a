// Evaluates curves, and keeps their derivatives up to date.
#include "platform/hyxUtil/spline.h"

#include "reference/hyx/values/number_checks.h"

#include <algorithm>
#include <cmath>

namespace hyxUtil {

void Spline::change() {
    ++m_revision;
}

void Spline::add(hyx::Vec3 const& point) {
    hyx::requireFinite(point, "a control point of a spline");
    m_points.push_back(point);
    change();
}

void Spline::setPoint(hyx::Index index, hyx::Vec3 const& point) {
    hyx::requireFinite(point, "a control point of a spline");
    m_points.at(index) = point;
    change();
}

void Spline::setPoints(hyx::Vec3Vector const& points) {
    for (hyx::Vec3 const& point : points)
        hyx::requireFinite(point, "a control point of a spline");
    m_points.assign(points.begin(), points.end());
    change();
}

void Spline::clear() {
    m_points.clear();
    change();
}

hyx::UInt Spline::getNumPoints() const {
    return m_points.size();
}

hyx::Vec3 Spline::getPoint(hyx::Index index) const {
    return m_points.at(index);
}

hyx::UInt Spline::getRevision() const {
    return m_revision;
}

Spline::Sample Spline::sample(hyx::Real parameter) const {
    if (m_points.empty())
        return {};
    if (m_points.size() == 1)
        return {m_points.front(), {}, {}};
    if (m_prepared != m_revision) {
        prepare();
        m_prepared = m_revision;
    }
    hyx::Index const segments = m_points.size() - 1;
    hyx::Real const place = std::isnan(parameter) ? 0 : std::clamp<hyx::Real>(parameter, 0, segments);
    hyx::Index const segment = std::min<hyx::Index>(static_cast<hyx::Index>(place), segments - 1);
    return sampleSegment(segment, place - segment);
}

hyx::Vec3 Spline::evaluate(hyx::Real parameter) const {
    return sample(parameter).position;
}

hyx::Vec3 Spline::getTangent(hyx::Real parameter) const {
    hyx::Vec3 const direction = sample(parameter).first;
    return direction.length2() > 0 ? direction.normal() : hyx::Vec3(1, 0, 0);
}

hyx::Real Spline::getCurvature(hyx::Real parameter) const {
    Sample const at = sample(parameter);
    hyx::Real const speed = at.first.length();
    return speed > 0 ? at.first.cross(at.second).length() / (speed * speed * speed) : 0;
}

hyx::Real Spline::getLength() const {
    // Five Gauss points a segment: exact to about 1e-6 for cubics that are not folded.
    static constexpr hyx::Real places[] = {0.046910077030668, 0.230765344947158, 0.5, 0.769234655052842,
                                           0.953089922969332};
    static constexpr hyx::Real weights[] = {0.118463442528095, 0.239314335249683, 0.284444444444444, 0.239314335249683,
                                            0.118463442528095};
    hyx::Real length = 0;
    for (hyx::Index segment = 0; segment + 1 < m_points.size(); ++segment)
        for (int i = 0; i < 5; ++i)
            length += weights[i] * sample(segment + places[i]).first.length();
    return length;
}

Spline::Sample Spline::sampleSegment(hyx::Index segment, hyx::Real t) const {
    hyx::Vec3 const step = m_points[segment + 1] - m_points[segment];
    return {m_points[segment] + step * t, step, {}};
}

// The second derivatives of a natural spline with uniform parameters solve a tridiagonal system with rows (1, 4, 1).
void CubicSpline::prepare() const {
    std::size_t const count = m_points.size();
    m_secondDerivatives.assign(count, hyx::Vec3());
    std::vector<hyx::Real> upper(count, 0);
    for (std::size_t i = 1; i + 1 < count; ++i) {
        hyx::Real const pivot = 4 - upper[i - 1];
        upper[i] = 1 / pivot;
        hyx::Vec3 const right = (m_points[i + 1] - m_points[i] * 2.0 + m_points[i - 1]) * 6.0;
        m_secondDerivatives[i] = (right - m_secondDerivatives[i - 1]) / pivot;
    }
    for (std::size_t i = count - 1; i-- > 1;)
        m_secondDerivatives[i] -= m_secondDerivatives[i + 1] * upper[i];
}

Spline::Sample CubicSpline::sampleSegment(hyx::Index segment, hyx::Real t) const {
    hyx::Vec3 const& p = m_points[segment];
    hyx::Vec3 const& q = m_points[segment + 1];
    hyx::Vec3 const& a = m_secondDerivatives[segment];
    hyx::Vec3 const& b = m_secondDerivatives[segment + 1];
    hyx::Real const u = 1 - t;
    return {p * u + q * t + (a * (u * u * u - u) + b * (t * t * t - t)) / 6.0,
            q - p + (b * (3 * t * t - 1) - a * (3 * u * u - 1)) / 6.0, a * u + b * t};
}

HermiteSpline::HermiteSpline(hyx::Real tension) : m_tension(hyx::requireShare(tension, "the tension of a spline")) {}

hyx::Real HermiteSpline::getTension() const {
    return m_tension;
}

hyx::Vec3 HermiteSpline::direction(hyx::Index point) const {
    hyx::Index const before = point > 0 ? point - 1 : 0;
    hyx::Index const after = std::min<hyx::Index>(point + 1, m_points.size() - 1);
    return (m_points[after] - m_points[before]) * ((1 - m_tension) / (after - before));
}

Spline::Sample HermiteSpline::sampleSegment(hyx::Index segment, hyx::Real t) const {
    hyx::Vec3 const& p = m_points[segment];
    hyx::Vec3 const step = m_points[segment + 1] - p;
    hyx::Vec3 const a = direction(segment);
    hyx::Vec3 const b = direction(segment + 1);
    hyx::Vec3 const second = step * 3.0 - a * 2.0 - b;
    hyx::Vec3 const third = a + b - step * 2.0;
    return {p + (a + (second + third * t) * t) * t, a + (second * 2.0 + third * (3 * t)) * t,
            second * 2.0 + third * (6 * t)};
}

} // namespace hyxUtil
