// Levels slopes in sweeps over the columns that are awake.
#include "reference/hyxTerrain/avalanche.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace hyxTerrain {

using hyx::Real;

namespace {

constexpr int sweeps = 4;
/// Part of the excess height between two columns that one sweep levels; eight neighbours share a column.
constexpr Real levelled = 0.2;
/// Excess height in elements below which a slope counts as standing.
constexpr Real tolerance = 1e-5;
constexpr Real settlingTime = 0.3;

} // namespace

Avalanche::Avalanche(Columns& columns) : m_columns(columns), m_marks(columns.size(), 0), m_slid(columns.size(), 0) {}

void Avalanche::activate(std::size_t c) {
    if (!m_marks[c]) {
        m_marks[c] = 1;
        m_active.push_back(c);
    }
}

void Avalanche::wake(std::size_t c) {
    long const x = static_cast<long>(c % m_columns.nx), y = static_cast<long>(c / m_columns.nx);
    for (long j = std::max(y - 1, 0l); j <= std::min<long>(y + 1, m_columns.ny - 1); ++j)
        for (long i = std::max(x - 1, 0l); i <= std::min<long>(x + 1, m_columns.nx - 1); ++i)
            activate(m_columns.index(i, j));
}

void Avalanche::wakeAll() {
    for (std::size_t c = 0; c < m_columns.size(); ++c)
        activate(c);
}

void Avalanche::step(Real timeStep, Real gravity) {
    for (std::size_t c : m_columns.takeChanged())
        wake(c);
    if (m_active.empty() || gravity <= 0)
        return;
    m_standing.clear();
    for (SoilMaterial const& material : m_columns.materials)
        m_standing.push_back(std::tan(std::min(material.reposeAngle, 1.5)));
    for (int sweep = 0; sweep < sweeps; ++sweep) {
        for (std::size_t const c : std::vector<std::size_t>(m_active))
            slide(c, timeStep, gravity);
        for (std::size_t c : m_columns.takeChanged())
            wake(c);
    }
    std::vector<std::size_t> const looked = std::exchange(m_active, {});
    for (std::size_t c : looked) {
        m_marks[c] = 0;
        bool const slid = std::exchange(m_slid[c], 0);
        Real const moving = m_columns.column(c).fluidMass;
        if (moving > 0 && !slid) {
            bool const last = m_columns.fluidThickness(c) < 1e-4 * m_columns.elementSize;
            m_columns.settle(c, last ? 1 : 1 - std::exp(-timeStep / settlingTime));
        }
        if (slid || m_columns.column(c).fluidMass > 0)
            activate(c);
    }
    // Settling leaves all heights as they are.
    m_columns.takeChanged();
}

Real Avalanche::standingSlope(std::size_t c) const {
    Columns::Column const& column = m_columns.column(c);
    unsigned int const material = column.fluidMass > 0 ? column.fluidMaterial
                                  : column.count > 0   ? column.layers[column.count - 1].material
                                                       : 0;
    return m_standing[material];
}

void Avalanche::slide(std::size_t c, Real timeStep, Real gravity) {
    long const x = static_cast<long>(c % m_columns.nx), y = static_cast<long>(c / m_columns.nx);
    Real const size = m_columns.elementSize;
    Real const standing = standingSlope(c);
    for (long dy = -1; dy <= 1; ++dy)
        for (long dx = -1; dx <= 1; ++dx) {
            long const i = x + dx, j = y + dy;
            if ((dx == 0 && dy == 0) || i < 0 || j < 0 || i >= static_cast<long>(m_columns.nx) ||
                j >= static_cast<long>(m_columns.ny))
                continue;
            std::size_t const neighbour = m_columns.index(i, j);
            Real const distance = size * (dx != 0 && dy != 0 ? std::numbers::sqrt2 : 1.0);
            Real const excess = m_columns.height(c) - m_columns.height(neighbour) - standing * distance;
            if (excess <= tolerance * size)
                continue;
            Soil const soil = m_columns.take(c, levelled * excess);
            if (soil.mass <= 0)
                return;
            // What it would gain by falling freely down the slope, but no faster than one column a step.
            Real const speed = std::min(std::sqrt(2 * gravity * excess), distance / timeStep) / distance * size;
            m_columns.addFluid(neighbour, soil, hyx::Vec3f(dx * speed, dy * speed, -standing * speed));
            m_slid[c] = m_slid[neighbour] = 1;
        }
}

} // namespace hyxTerrain
