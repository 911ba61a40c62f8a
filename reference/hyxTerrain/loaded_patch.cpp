// The hull of points, with a margin.
#include "reference/hyxTerrain/loaded_patch.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace hyxTerrain {

using hyx::Real;
using hyx::Vec3;

namespace {

/// Metres; what lies on one point presses on a patch of this radius, and no patch is much narrower.
constexpr Real leastRadius = 0.1;

Real turn(Vec3 const& a, Vec3 const& b, Vec3 const& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

} // namespace

LoadedPatch::LoadedPatch(std::vector<Vec3> places) {
    for (Vec3& place : places)
        place.z = 0;
    std::sort(places.begin(), places.end(),
              [](Vec3 const& a, Vec3 const& b) { return a.x != b.x ? a.x < b.x : a.y < b.y; });
    // The lower side from left to right, then the upper side back.
    for (int side = 0; side < 2; ++side) {
        std::size_t const start = m_corners.size();
        for (Vec3 const& place : places) {
            while (m_corners.size() >= start + 2 && turn(m_corners[m_corners.size() - 2], m_corners.back(), place) <= 0)
                m_corners.pop_back();
            m_corners.push_back(place);
        }
        if (m_corners.size() > 1)
            m_corners.pop_back();
        std::reverse(places.begin(), places.end());
    }
    Real const around = outline();
    m_margin = around > 0 ? std::max(leastRadius - 2 * area() / around, 0.0) : leastRadius;
}

Real LoadedPatch::outline() const {
    Real sum = 0;
    for (std::size_t i = 0; i < m_corners.size(); ++i)
        sum += (m_corners[(i + 1) % m_corners.size()] - m_corners[i]).length();
    return sum;
}

Real LoadedPatch::area() const {
    Real sum = std::numbers::pi * m_margin * m_margin + outline() * m_margin;
    for (std::size_t i = 0; i < m_corners.size(); ++i) {
        Vec3 const& next = m_corners[(i + 1) % m_corners.size()];
        sum += (m_corners[i].x * next.y - m_corners[i].y * next.x) / 2;
    }
    return sum;
}

std::pair<Vec3, Vec3> LoadedPatch::bound() const {
    Vec3 lower = m_corners.front(), upper = m_corners.front();
    for (Vec3 const& corner : m_corners)
        for (std::size_t i = 0; i < 2; ++i) {
            lower[i] = std::min(lower[i], corner[i]);
            upper[i] = std::max(upper[i], corner[i]);
        }
    Vec3 const around(m_margin, m_margin, 0);
    return {lower - around, upper + around};
}

// A square and a convex patch are apart only where a side of the one or of the other has the whole other beyond it.
bool LoadedPatch::bears(Vec3 const& center, Real elementSize) const {
    auto const [lower, upper] = bound();
    for (std::size_t i = 0; i < 2; ++i)
        if (center[i] + elementSize <= lower[i] || center[i] - elementSize >= upper[i])
            return false;
    for (std::size_t i = 0; m_corners.size() > 1 && i < m_corners.size(); ++i) {
        Vec3 const& next = m_corners[(i + 1) % m_corners.size()];
        Vec3 const side = next - m_corners[i];
        Real const reach = (elementSize + m_margin) * (std::abs(side.x) + std::abs(side.y));
        if (turn(m_corners[i], next, center) <= -reach)
            return false;
    }
    return true;
}

} // namespace hyxTerrain
