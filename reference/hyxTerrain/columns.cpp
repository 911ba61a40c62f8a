// Adds, takes, settles and compacts the layers of columns.
#include "reference/hyxTerrain/columns.h"

#include <algorithm>
#include <cmath>

namespace hyxTerrain {

using hyx::Real;

Columns::Columns(hyx::UInt nx, hyx::UInt ny, Real elementSize, Real depth)
    : nx(nx),
      ny(ny),
      elementSize(elementSize),
      area(elementSize * elementSize),
      rock(-depth),
      materials(1),
      m_columns(nx * ny),
      m_exactHeights(nx * ny, 0),
      m_heights(nx * ny, 0),
      m_changedMarks(nx * ny, 0),
      m_rowRevisions(ny, 1) {
    Layer const ground{materials[0].density * depth * area, depth, 0};
    for (Column& column : m_columns)
        push(column, ground);
}

bool Columns::find(hyx::Vec3 const& place, std::size_t& c) const {
    Real const x = std::round(place.x / elementSize), y = std::round(place.y / elementSize);
    if (!(x >= 0 && y >= 0 && x < static_cast<Real>(nx) && y < static_cast<Real>(ny)))
        return false;
    c = index(static_cast<hyx::UInt>(x), static_cast<hyx::UInt>(y));
    return true;
}

Real Columns::fluidThickness(std::size_t c) const {
    Column const& column = m_columns[c];
    return column.fluidMass / (materials[column.fluidMaterial].density * loose * area);
}

Real Columns::mass() const {
    Real sum = 0;
    for (Column const& column : m_columns) {
        sum += column.fluidMass;
        for (int i = 0; i < column.count; ++i)
            sum += column.layers[i].mass;
    }
    return sum;
}

void Columns::addSolid(std::size_t c, Soil const& soil, Real compaction) {
    if (soil.mass > 0)
        push(m_columns[c], layerOf(soil, compaction));
    refresh(c);
}

void Columns::addFluid(std::size_t c, Soil const& soil, hyx::Vec3f const& velocity) {
    Column& column = m_columns[c];
    if (column.fluidMass > 0 && column.fluidMaterial != soil.material)
        settle(c, 1);
    Real const total = column.fluidMass + soil.mass;
    if (total > 0)
        column.velocity = column.velocity * static_cast<float>(column.fluidMass / total) +
                          velocity * static_cast<float>(soil.mass / total);
    column.fluidMass = total;
    column.fluidMaterial = static_cast<unsigned int>(soil.material);
    refresh(c);
}

Soil Columns::take(std::size_t c, Real wanted) {
    Column& column = m_columns[c];
    Soil taken;
    if (column.fluidMass > 0) {
        Real const part = std::min(1.0, wanted / fluidThickness(c));
        taken = {column.fluidMass * part, column.fluidMaterial};
        column.fluidMass -= taken.mass;
    } else if (column.count > 0) {
        Layer& top = column.layers[column.count - 1];
        Real const part = std::min(1.0, wanted / top.thickness);
        taken = {top.mass * part, top.material};
        top.mass -= taken.mass;
        top.thickness -= top.thickness * part;
        if (part == 1)
            --column.count;
    }
    refresh(c);
    return taken;
}

void Columns::settle(std::size_t c, Real part) {
    Column& column = m_columns[c];
    Real const mass = column.fluidMass * part;
    column.fluidMass -= mass;
    column.velocity *= static_cast<float>(1 - part);
    if (mass > 0)
        push(column, layerOf({mass, column.fluidMaterial}, loose));
    refresh(c);
}

void Columns::compact(std::size_t c, Real pressure, Real width) {
    Column& column = m_columns[c];
    settle(c, 1);
    // What was pressed before has a boundary there already, a little higher than it was.
    if (!hasBoundary(column, 2 * width / densest, 2 * width))
        splitAt(column, 2 * width);
    // Depths are those of the soil as it was laid, so that the same load presses no further a second time.
    Real depth = 0;
    for (int i = column.count - 1; i >= 0; --i) {
        Layer& layer = column.layers[i];
        SoilMaterial const& material = materials[layer.material];
        Real const laid = layer.mass / (material.density * area);
        Real const middle = depth + 0.5 * laid;
        depth += laid;
        Real const spread = 1 + middle / width;
        Real const ratio = pressure / (spread * spread) / material.firstPressure;
        if (ratio > 1) {
            Real const reached = std::min(1 + material.compressibility * std::log10(ratio), densest);
            if (Real const now = compaction(layer); reached > now * (1 + 1e-12))
                layer.thickness *= now / reached;
        }
    }
    refresh(c);
}

void Columns::changeMaterial(std::size_t c, unsigned int material, Real depth) {
    Column& column = m_columns[c];
    settle(c, 1);
    splitAt(column, depth);
    Real reached = 0;
    for (int i = column.count - 1; i >= 0 && reached < depth * (1 - 1e-9); --i) {
        Layer& layer = column.layers[i];
        reached += layer.thickness;
        layer.mass *= materials[material].density / materials[layer.material].density;
        layer.material = material;
    }
    refresh(c);
}

void Columns::replaceMaterial(hyx::UInt material, SoilMaterial const& value) {
    Real const swelling = materials[material].density / value.density;
    materials[material] = value;
    for (std::size_t c = 0; c < size(); ++c) {
        for (int i = 0; i < m_columns[c].count; ++i)
            if (m_columns[c].layers[i].material == material)
                m_columns[c].layers[i].thickness *= swelling;
        refresh(c);
    }
}

// Puts a layer on top; one that is like the top layer becomes part of it.
void Columns::push(Column& column, Layer const& layer) {
    if (column.count > 0) {
        Layer& top = column.layers[column.count - 1];
        if (top.material == layer.material && std::abs(compaction(top) - compaction(layer)) < 1e-3) {
            top.mass += layer.mass;
            top.thickness += layer.thickness;
            return;
        }
    }
    if (column.count == maximumLayers)
        mergeMostAlike(column);
    column.layers[column.count++] = layer;
}

// Joins two neighbouring layers, of one kind where there are such; mass and volume stay.
void Columns::mergeMostAlike(Column& column) {
    int best = 0;
    Real bestDifference = 1e300;
    for (int i = 0; i + 1 < column.count; ++i) {
        Layer const& low = column.layers[i];
        Layer const& high = column.layers[i + 1];
        Real const difference =
            std::abs(compaction(low) - compaction(high)) + (low.material == high.material ? 0 : 1000);
        if (difference < bestDifference) {
            bestDifference = difference;
            best = i;
        }
    }
    Layer& low = column.layers[best];
    Layer const& high = column.layers[best + 1];
    low = {low.mass + high.mass, low.thickness + high.thickness, high.mass > low.mass ? high.material : low.material};
    std::copy(column.layers.begin() + best + 2, column.layers.begin() + column.count, column.layers.begin() + best + 1);
    --column.count;
}

bool Columns::hasBoundary(Column const& column, Real from, Real to) const {
    Real depth = 0;
    for (int i = column.count - 1; i >= 0 && depth < from; --i)
        depth += column.layers[i].thickness;
    return depth >= from && depth <= to * (1 + 1e-9);
}

// Cuts the layer that reaches across `depth` metres below the top of the layers.
void Columns::splitAt(Column& column, Real depth) {
    Real top = 0;
    for (int i = column.count - 1; i >= 0; --i) {
        Real const bottom = top + column.layers[i].thickness;
        if (bottom > depth * (1 + 1e-9) && top < depth * (1 - 1e-9)) {
            if (column.count == maximumLayers) {
                mergeMostAlike(column);
                return splitAt(column, depth);
            }
            std::copy_backward(column.layers.begin() + i, column.layers.begin() + column.count,
                               column.layers.begin() + column.count + 1);
            ++column.count;
            Real const part = (depth - top) / (bottom - top);
            Layer const whole = column.layers[i];
            column.layers[i + 1] = {whole.mass * part, whole.thickness * part, whole.material};
            column.layers[i].mass -= column.layers[i + 1].mass;
            column.layers[i].thickness -= column.layers[i + 1].thickness;
            return;
        }
        top = bottom;
    }
}

Columns::Layer Columns::layerOf(Soil const& soil, Real compaction) const {
    return {soil.mass, soil.mass / (materials[soil.material].density * compaction * area),
            static_cast<unsigned int>(soil.material)};
}

void Columns::refresh(std::size_t c) {
    Column const& column = m_columns[c];
    Real height = rock + fluidThickness(c);
    for (int i = 0; i < column.count; ++i)
        height += column.layers[i].thickness;
    m_exactHeights[c] = height;
    m_heights[c] = static_cast<float>(height);
    m_rowRevisions[c / nx] = ++m_revision;
    if (!m_changedMarks[c]) {
        m_changedMarks[c] = 1;
        m_changed.push_back(c);
    }
}

std::vector<std::size_t> Columns::takeChanged() {
    for (std::size_t c : m_changed)
        m_changedMarks[c] = 0;
    return std::exchange(m_changed, {});
}

} // namespace hyxTerrain
