// Shares the layers of soil among cells.
#include "platform/hyxTerrain/terrain_cells.h"

#include "reference/hyx/values/number_checks.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace hyxTerrain {

using hyx::Real;
using hyx::UInt;

namespace {

constexpr Real mostCells = 1e6;

/// A cell and how much there is of each material.
struct Filling {
    Voxel cell;
    std::map<UInt, Real> materials;

    void add(Voxel const& layer, Real share) {
        Real const solid = layer.solidMass * share;
        Real const fluid = layer.fluidMass * share;
        Real const before = cell.solidMass + cell.fluidMass;
        Real const added = solid + fluid;
        if (!(added > 0))
            return;
        cell.compaction = (cell.compaction * before + layer.compaction * added) / (before + added);
        if (fluid > 0)
            cell.velocity = (cell.velocity * cell.fluidMass + layer.velocity * fluid) / (cell.fluidMass + fluid);
        cell.solidMass += solid;
        cell.fluidMass += fluid;
        materials[layer.material] += added;
    }
};

void share(Voxel const& layer, Real bottom, Real height, std::vector<Filling>& fillings) {
    Real const from = std::max(0.0, (layer.bottom - bottom) / height);
    Real const to = std::max(from, (layer.bottom + layer.thickness - bottom) / height);
    auto const first = static_cast<std::size_t>(from);
    auto const last = std::max(first, static_cast<std::size_t>(std::ceil(to - 1e-9)) - (to > 1e-9 ? 1 : 0));
    if (fillings.size() <= last)
        fillings.resize(last + 1);
    Real given = 0;
    for (std::size_t i = first; i < last; ++i) {
        Real const part = (std::min(to, static_cast<Real>(i + 1)) - std::max(from, static_cast<Real>(i))) / (to - from);
        fillings[i].add(layer, part);
        given += part;
    }
    fillings[last].add(layer, 1 - given); // whatever rounding has left
}

} // namespace

std::vector<Voxel> cellsOf(Terrain const& terrain, UInt x, UInt y, Real height) {
    hyx::requirePositive(height, "the height of a cell");
    Real const bottom = -terrain.getDepth();
    std::vector<Voxel> const layers = terrain.getVoxels(x, y);
    hyx::requireArgument(layers.empty() ||
                             (layers.back().bottom + layers.back().thickness - bottom) / height <= mostCells,
                         "a column of soil has at most a million cells: choose a larger height");
    std::vector<Filling> fillings;
    for (Voxel const& layer : layers)
        share(layer, bottom, height, fillings);
    std::vector<Voxel> cells;
    for (std::size_t i = 0; i < fillings.size(); ++i) {
        Filling& filling = fillings[i];
        if (filling.materials.empty())
            continue;
        filling.cell.bottom = bottom + static_cast<Real>(i) * height;
        filling.cell.thickness = height;
        filling.cell.material =
            std::max_element(filling.materials.begin(), filling.materials.end(), [](auto const& a, auto const& b) {
                return a.second < b.second;
            })->first;
        cells.push_back(filling.cell);
    }
    return cells;
}

} // namespace hyxTerrain
