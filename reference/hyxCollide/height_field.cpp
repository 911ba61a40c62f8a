// Heights over a grid: reading, changing, and telling who shows them.
#include "platform/hyxCollide/height_field.h"

#include "reference/hyx/values/number_checks.h"
#include "reference/machinery/bullet/geometry_implementation.h"
#include "reference/machinery/bullet/shape_implementation.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace hyxCollide {

HeightField::HeightField(hyx::UInt resolutionX, hyx::UInt resolutionY, hyx::Real sizeX, hyx::Real sizeY)
    : m_resolutionX(resolutionX),
      m_resolutionY(resolutionY),
      m_sizeX(hyx::requirePositive(sizeX, "the size of a height field")),
      m_sizeY(hyx::requirePositive(sizeY, "the size of a height field")) {
    if (resolutionX < 2 || resolutionY < 2 || resolutionX > 32768 || resolutionY > 32768)
        throw std::invalid_argument("a height field needs 2 to 32768 knots each way");
    m_heights.resize(resolutionX * resolutionY);
}

HeightField::HeightField(hyx::UInt resolutionX, hyx::UInt resolutionY, hyx::Real sizeX, hyx::Real sizeY,
                         hyx::RealVector const& heights)
    : HeightField(resolutionX, resolutionY, sizeX, sizeY) {
    setHeights(heights);
}

void HeightField::setHeight(hyx::UInt i, hyx::UInt j, hyx::Real height) {
    getHeight(i, j);
    m_heights[j * m_resolutionX + i] = hyx::requireFinite(height, "a height");
    changed(std::abs(height) > implementation().heightReach);
}

hyx::Real HeightField::getHeight(hyx::UInt i, hyx::UInt j) const {
    if (i >= m_resolutionX || j >= m_resolutionY)
        throw std::out_of_range("the height field has no such knot");
    return m_heights[j * m_resolutionX + i];
}

void HeightField::setHeights(hyx::RealVector const& heights) {
    if (heights.size() != m_heights.size())
        throw std::invalid_argument("the number of heights must be that of the knots");
    for (double height : heights)
        hyx::requireFinite(height, "a height");
    // The simulation reads this very memory, so it is filled and never replaced.
    std::copy(heights.begin(), heights.end(), m_heights.begin());
    heightsChanged();
}

hyx::Real HeightField::getHeightAt(hyx::Real x, hyx::Real y) const {
    double const u = std::clamp((x / m_sizeX + 0.5) * (m_resolutionX - 1), 0.0, m_resolutionX - 1.0);
    double const v = std::clamp((y / m_sizeY + 0.5) * (m_resolutionY - 1), 0.0, m_resolutionY - 1.0);
    hyx::UInt const i = std::min(static_cast<hyx::UInt>(u), m_resolutionX - 2);
    hyx::UInt const j = std::min(static_cast<hyx::UInt>(v), m_resolutionY - 2);
    double const s = u - i;
    double const t = v - j;
    // Each cell is two triangles that meet on the diagonal from (i + 1, j) to (i, j + 1).
    if (s + t <= 1)
        return getHeight(i, j) + s * (getHeight(i + 1, j) - getHeight(i, j)) +
               t * (getHeight(i, j + 1) - getHeight(i, j));
    double const far = getHeight(i + 1, j + 1);
    return far + (1 - s) * (getHeight(i, j + 1) - far) + (1 - t) * (getHeight(i + 1, j) - far);
}

hyx::Vec3 HeightField::getVertex(hyx::UInt i, hyx::UInt j) const {
    return hyx::Vec3(m_sizeX * (static_cast<double>(i) / (m_resolutionX - 1) - 0.5),
                     m_sizeY * (static_cast<double>(j) / (m_resolutionY - 1) - 0.5), getHeight(i, j));
}

void HeightField::heightsChanged() {
    auto const [lowest, highest] = std::minmax_element(m_heights.begin(), m_heights.end());
    changed(std::max(-*lowest, *highest) > implementation().heightReach);
}

void HeightField::getBound(hyx::Vec3& lower, hyx::Vec3& upper) const {
    auto const [lowest, highest] = std::minmax_element(m_heights.begin(), m_heights.end());
    lower = hyx::Vec3(-m_sizeX / 2, -m_sizeY / 2, *lowest);
    upper = hyx::Vec3(m_sizeX / 2, m_sizeY / 2, *highest);
}

} // namespace hyxCollide
