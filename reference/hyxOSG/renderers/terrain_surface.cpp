// Computes heights, normals and colours of the rows that changed.
#include "reference/hyxOSG/renderers/terrain_surface.h"

#include "platform/hyxOSG/renderers/scalar_color_map.h"
#include "reference/hyxOSG/renderers/color_presets.h"
#include "reference/machinery/shading/vertex_colors.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace hyxOSG {

namespace {

constexpr int shades = 256;
using Table = std::array<osg::Vec4ub, shades>;

osg::Vec4ub toBytes(hyx::Vec4f const& color) {
    auto const byte = [](float value) {
        return static_cast<unsigned char>(std::lround(std::clamp(value, 0.0f, 1.0f) * 255));
    };
    return osg::Vec4ub(byte(color.x), byte(color.y), byte(color.z), byte(color.w));
}

Table tableOf(ScalarColorMap::ColorRangePreset preset) {
    auto const& colors = presetColors(preset);
    Table table;
    for (int i = 0; i < shades; ++i)
        table[i] = toBytes(hyx::Vec4f(colors[i].r(), colors[i].g(), colors[i].b(), colors[i].a()));
    return table;
}

osg::Vec4ub shade(Table const& table, double value, double lowest, double highest) {
    double const share = highest > lowest ? (value - lowest) / (highest - lowest) : 0;
    return table[std::lround(std::clamp(share, 0.0, 1.0) * (shades - 1))];
}

// Of the colours of compaction, where the range that is asked for has an end.
std::pair<double, double> compactionEnds(hyx::RangeReal const& range) {
    return {std::isfinite(range.lower()) ? range.lower() : 0.7, std::isfinite(range.upper()) ? range.upper() : 1.3};
}

osg::Vec4ub materialColor(TerrainColoring const& coloring, hyx::UInt material) {
    if (coloring.materialColors.empty() || (material == 0 && !coloring.defaultMaterial))
        return toBytes(coloring.color);
    return toBytes(
        coloring.materialColors[std::min<std::size_t>(material, coloring.materialColors.size() - 1)].toVec4f());
}

} // namespace

TerrainSurface::TerrainSurface(hyxTerrain::Terrain const& terrain) : m_terrain(terrain) {
    std::size_t const count = terrain.getNumColumnsX() * terrain.getNumColumnsY();
    m_surface.positions().resize(count);
    m_surface.normals().resize(count);
    m_colors->resize(count);
    useVertexColors(*m_surface.node(), m_colors.get());
    makeTriangles();
}

// Strips of rows: a column's triangles lie near each other in the buffer.
void TerrainSurface::makeTriangles() {
    auto const nx = static_cast<unsigned int>(m_terrain.getNumColumnsX());
    osg::DrawElementsUInt& triangles = m_surface.triangles();
    triangles.reserve(6 * (nx - 1) * (m_terrain.getNumColumnsY() - 1));
    for (unsigned int y = 0; y + 1 < m_terrain.getNumColumnsY(); ++y)
        for (unsigned int x = 0; x + 1 < nx; ++x) {
            unsigned int const a = y * nx + x, b = a + 1, c = a + nx, d = c + 1;
            for (unsigned int corner : {a, b, d, a, d, c})
                triangles.push_back(corner);
        }
}

bool TerrainSurface::update(TerrainColoring const& coloring, bool all) {
    if (!all && m_drawnRevision == m_terrain.getRevision())
        return false;
    float const lowest = m_lowest, highest = m_highest;
    if (coloring.heights)
        findHeightRange(coloring.heightRange);
    bool const recolor = all || (coloring.heights && (lowest != m_lowest || highest != m_highest));
    hyx::UInt const ny = m_terrain.getNumColumnsY();
    auto const changed = [&](hyx::UInt row) { return all || m_terrain.getRowRevision(row) > m_drawnRevision; };
    for (hyx::UInt row = 0; row < ny; ++row) {
        if (changed(row))
            writePositions(row);
        // The normals of a row depend on the rows beside it.
        if (changed(row) || (row > 0 && changed(row - 1)) || (row + 1 < ny && changed(row + 1)))
            writeNormals(row);
        if (recolor || changed(row))
            writeColors(row, coloring);
    }
    m_drawnRevision = m_terrain.getRevision();
    m_colors->dirty();
    followOpacity(*m_surface.node(), *m_colors);
    m_surface.publish(false);
    return true;
}

void TerrainSurface::findHeightRange(hyx::RangeReal const& wanted) {
    auto const [low, high] = std::minmax_element(m_terrain.getHeights().begin(), m_terrain.getHeights().end());
    double const base = m_terrain.getPosition().z;
    m_lowest = std::isfinite(wanted.lower()) ? static_cast<float>(wanted.lower() - base) : *low;
    m_highest = std::isfinite(wanted.upper()) ? static_cast<float>(wanted.upper() - base) : *high;
}

void TerrainSurface::writePositions(hyx::UInt row) {
    hyx::UInt const nx = m_terrain.getNumColumnsX();
    auto const size = static_cast<float>(m_terrain.getElementSize());
    float const* heights = m_terrain.getHeights().data() + row * nx;
    osg::Vec3* positions = &m_surface.positions()[row * nx];
    for (hyx::UInt x = 0; x < nx; ++x)
        positions[x].set(static_cast<float>(x) * size, static_cast<float>(row) * size, heights[x]);
}

// Central differences; one-sided ones at the border.
void TerrainSurface::writeNormals(hyx::UInt row) {
    hyx::UInt const nx = m_terrain.getNumColumnsX(), ny = m_terrain.getNumColumnsY();
    float const* heights = m_terrain.getHeights().data();
    hyx::UInt const south = row > 0 ? row - 1 : row, north = row + 1 < ny ? row + 1 : row;
    auto const size = static_cast<float>(m_terrain.getElementSize());
    float const overY = 1 / (size * static_cast<float>(north - south));
    osg::Vec3* normals = &m_surface.normals()[row * nx];
    for (hyx::UInt x = 0; x < nx; ++x) {
        hyx::UInt const west = x > 0 ? x - 1 : x, east = x + 1 < nx ? x + 1 : x;
        float const slopeX =
            (heights[row * nx + east] - heights[row * nx + west]) / (size * static_cast<float>(east - west));
        float const slopeY = (heights[north * nx + x] - heights[south * nx + x]) * overY;
        float const length = std::sqrt(slopeX * slopeX + slopeY * slopeY + 1);
        normals[x].set(-slopeX / length, -slopeY / length, 1 / length);
    }
}

void TerrainSurface::writeColors(hyx::UInt row, TerrainColoring const& coloring) {
    static Table const heightTable = tableOf(ScalarColorMap::VIRIDIS);
    static Table const compactionTable = tableOf(ScalarColorMap::COOLWARM);
    hyx::UInt const nx = m_terrain.getNumColumnsX();
    osg::Vec4ub* colors = &(*m_colors)[row * nx];
    auto const [loosest, densest] = compactionEnds(coloring.compactionRange);
    osg::Vec4ub const plain = toBytes(coloring.color);
    for (hyx::UInt x = 0; x < nx; ++x)
        colors[x] = coloring.materials ? materialColor(coloring, m_terrain.getSurfaceMaterial(x, row))
                    : coloring.compaction
                        ? shade(compactionTable, m_terrain.getSurfaceCompaction(x, row), loosest, densest)
                    : coloring.heights ? shade(heightTable, m_terrain.getHeights()[row * nx + x], m_lowest, m_highest)
                                       : plain;
}

std::optional<DrawnScale> TerrainSurface::scale(TerrainColoring const& coloring) const {
    if (coloring.materials || (!coloring.compaction && !coloring.heights))
        return std::nullopt;
    if (coloring.compaction) {
        auto const [loosest, densest] = compactionEnds(coloring.compactionRange);
        return DrawnScale{presetColors(ScalarColorMap::COOLWARM), loosest, densest};
    }
    double const base = m_terrain.getPosition().z;
    return DrawnScale{presetColors(ScalarColorMap::VIRIDIS), base + m_lowest, base + m_highest};
}

} // namespace hyxOSG
