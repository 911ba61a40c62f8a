// Rows of terrain and soil.
#include "platform/hyxTerrain/terrain.h"

#include "binding/vocabulary/number_arrays.h"
#include "binding/vocabulary/rows.h"
#include "platform/hyxTerrain/terrain_cells.h"

#include <stdexcept>

namespace {

// A row of heights for each y, in metres.
PyObject* heights(hyxTerrain::Terrain const& self) {
    return vocabulary::copied_array(self.getHeights().data(), self.getNumColumnsY(), self.getNumColumnsX());
}

void set_heights(hyxTerrain::Terrain& self, PyObject* heights) {
    std::vector<double> const numbers = vocabulary::read_all_numbers(heights);
    if (numbers.size() != self.getNumColumnsX() * self.getNumColumnsY())
        throw std::invalid_argument("a terrain needs one height for each column");
    for (std::size_t i = 0; i < numbers.size(); ++i)
        self.setHeight(i % self.getNumColumnsX(), i / self.getNumColumnsX(), numbers[i]);
}

PyObject* voxels(hyxTerrain::Terrain const& self, hyx::UInt x, hyx::UInt y) {
    return vocabulary::to_list(self.getVoxels(x, y));
}

// A row for each cell, as `Terrain.cells` in python/extras/hyxTerrain.py reads them; the middle of the cell in the
// world.
PyObject* cells(hyxTerrain::Terrain const& self, hyx::Real height) {
    constexpr std::size_t columns = 7;
    constexpr std::size_t most_cells = 10'000'000;
    std::vector<double> numbers;
    for (hyx::UInt y = 0; y < self.getNumColumnsY(); ++y)
        for (hyx::UInt x = 0; x < self.getNumColumnsX(); ++x)
            for (hyxTerrain::Voxel const& cell : hyxTerrain::cellsOf(self, x, y, height)) {
                double const size = self.getElementSize();
                hyx::Vec3 const middle =
                    self.getPosition() +
                    hyx::Vec3(static_cast<double>(x) * size, static_cast<double>(y) * size, cell.bottom + height / 2);
                if (numbers.size() >= most_cells * columns)
                    throw std::invalid_argument("soil has at most 10 million cells: choose a larger size");
                numbers.insert(numbers.end(), {middle.x, middle.y, middle.z, cell.solidMass, cell.fluidMass,
                                               cell.compaction, static_cast<double>(cell.material)});
            }
    return vocabulary::copied_array(numbers.data(), numbers.size() / columns, columns);
}

PyObject* tools(hyxTerrain::Terrain const& self) {
    return vocabulary::to_shared_list(self.getTools());
}

constexpr Declared terrain_rows[] = {
    FUNCTION(new_Terrain, NEW(hyxTerrain::Terrain, (hyx::UInt, hyx::UInt, hyx::Real, hyx::Real))),
    FUNCTION(Terrain_getNumColumnsX, METHOD(hyxTerrain::Terrain, getNumColumnsX, () const)),
    FUNCTION(Terrain_getNumColumnsY, METHOD(hyxTerrain::Terrain, getNumColumnsY, () const)),
    FUNCTION(Terrain_getElementSize, METHOD(hyxTerrain::Terrain, getElementSize, () const)),
    FUNCTION(Terrain_getDepth, METHOD(hyxTerrain::Terrain, getDepth, () const)),
    FUNCTION(Terrain_setPosition, METHOD(hyxTerrain::Terrain, setPosition, (hyx::Vec3 const&))),
    FUNCTION(Terrain_getPosition, METHOD(hyxTerrain::Terrain, getPosition, () const)),
    FUNCTION(Terrain_getHeight, METHOD(hyxTerrain::Terrain, getHeight, (hyx::UInt, hyx::UInt) const)),
    FUNCTION(Terrain_setHeight, METHOD(hyxTerrain::Terrain, setHeight, (hyx::UInt, hyx::UInt, hyx::Real))),
    FUNCTION(Terrain_getHeights, ADAPTER(hyxTerrain::Terrain, getHeights, heights, () const)),
    FUNCTION(Terrain_setHeights, CONTAINER(ADAPTER(hyxTerrain::Terrain, setHeights, set_heights, (PyObject*)))),
    FUNCTION(Terrain_getWorldHeight, METHOD(hyxTerrain::Terrain, getWorldHeight, (hyx::Real, hyx::Real) const)),
    FUNCTION(Terrain_getWorldNormal, METHOD(hyxTerrain::Terrain, getWorldNormal, (hyx::Real, hyx::Real) const)),
    FUNCTION(Terrain_addMaterial, METHOD(hyxTerrain::Terrain, addMaterial, (hyxTerrain::SoilMaterial const&))),
    FUNCTION(Terrain_getNumMaterials, METHOD(hyxTerrain::Terrain, getNumMaterials, () const)),
    FUNCTION(Terrain_getMaterial, METHOD(hyxTerrain::Terrain, getMaterial, (hyx::UInt) const)),
    FUNCTION(Terrain_setMaterial,
             METHOD(hyxTerrain::Terrain, setMaterial, (hyx::UInt, hyxTerrain::SoilMaterial const&))),
    FUNCTION(Terrain_setColumnMaterial,
             METHOD(hyxTerrain::Terrain, setColumnMaterial, (hyx::UInt, hyx::UInt, hyx::UInt, hyx::Real))),
    FUNCTION(Terrain_getVoxels, ADAPTER(hyxTerrain::Terrain, getVoxels, voxels, (hyx::UInt, hyx::UInt) const)),
    FUNCTION(Terrain_getCells, ADAPTER(hyxTerrain::Terrain, getCells, cells, (hyx::Real) const)),
    FUNCTION(Terrain_getSurfaceMaterial, METHOD(hyxTerrain::Terrain, getSurfaceMaterial, (hyx::UInt, hyx::UInt) const)),
    FUNCTION(Terrain_getSurfaceCompaction,
             METHOD(hyxTerrain::Terrain, getSurfaceCompaction, (hyx::UInt, hyx::UInt) const)),
    FUNCTION(Terrain_getFluidMass, METHOD(hyxTerrain::Terrain, getFluidMass, (hyx::UInt, hyx::UInt) const)),
    FUNCTION(Terrain_getFluidVelocity, METHOD(hyxTerrain::Terrain, getFluidVelocity, (hyx::UInt, hyx::UInt) const)),
    FUNCTION(Terrain_getMass, METHOD(hyxTerrain::Terrain, getMass, () const)),
    FUNCTION(Terrain_addMass, METHOD(hyxTerrain::Terrain, addMass, (hyx::UInt, hyx::UInt, hyx::Real, hyx::UInt), 0)),
    FUNCTION(Terrain_removeAbove, METHOD(hyxTerrain::Terrain, removeAbove, (hyx::UInt, hyx::UInt, hyx::Real))),
    FUNCTION(Terrain_dig,
             METHOD(hyxTerrain::Terrain, dig, (hyx::UInt, hyx::UInt, hyx::Real, hyx::Vec3 const&), hyx::Vec3())),
    FUNCTION(Terrain_compact, METHOD(hyxTerrain::Terrain, compact, (hyx::UInt, hyx::UInt, hyx::Real))),
    FUNCTION(Terrain_disturb, METHOD(hyxTerrain::Terrain, disturb, ())),
    FUNCTION(Terrain_addTool, METHOD(hyxTerrain::Terrain, addTool, (hyxTerrain::DigTool*))),
    FUNCTION(Terrain_removeTool, METHOD(hyxTerrain::Terrain, removeTool, (hyxTerrain::DigTool*))),
    FUNCTION(Terrain_getTools, ADAPTER(hyxTerrain::Terrain, getTools, tools, () const)),
    FUNCTION(Terrain_getSoilParticles, SHARED(METHOD(hyxTerrain::Terrain, getSoilParticles, () const))),
    FUNCTION(Terrain_setEnableSoilParticles, METHOD(hyxTerrain::Terrain, setEnableSoilParticles, (bool))),
    FUNCTION(Terrain_getEnableSoilParticles, METHOD(hyxTerrain::Terrain, getEnableSoilParticles, () const)),
    FUNCTION(Terrain_step, METHOD(hyxTerrain::Terrain, step, (hyx::Real))),
    FUNCTION(Terrain_getRevision, METHOD(hyxTerrain::Terrain, getRevision, () const)),
    FUNCTION(Terrain_getRowRevision, METHOD(hyxTerrain::Terrain, getRowRevision, (hyx::UInt) const)),
    FUNCTION(delete_Terrain, DELETE(hyxTerrain::Terrain)),
    REGISTER(hyxTerrain::Terrain, Terrain),
    INIT(Terrain),
    FUNCTION(new_SoilMaterial, NEW(hyxTerrain::SoilMaterial, ())),
    FUNCTION(SoilMaterial_density_get, GET(hyxTerrain::SoilMaterial, density)),
    FUNCTION(SoilMaterial_density_set, SET(hyxTerrain::SoilMaterial, density, (double))),
    FUNCTION(SoilMaterial_reposeAngle_get, GET(hyxTerrain::SoilMaterial, reposeAngle)),
    FUNCTION(SoilMaterial_reposeAngle_set, SET(hyxTerrain::SoilMaterial, reposeAngle, (double))),
    FUNCTION(SoilMaterial_compressibility_get, GET(hyxTerrain::SoilMaterial, compressibility)),
    FUNCTION(SoilMaterial_compressibility_set, SET(hyxTerrain::SoilMaterial, compressibility, (double))),
    FUNCTION(SoilMaterial_firstPressure_get, GET(hyxTerrain::SoilMaterial, firstPressure)),
    FUNCTION(SoilMaterial_firstPressure_set, SET(hyxTerrain::SoilMaterial, firstPressure, (double))),
    FUNCTION(SoilMaterial_shearLength_get, GET(hyxTerrain::SoilMaterial, shearLength)),
    FUNCTION(SoilMaterial_shearLength_set, SET(hyxTerrain::SoilMaterial, shearLength, (double))),
    FUNCTION(delete_SoilMaterial, DELETE(hyxTerrain::SoilMaterial)),
    REGISTER(hyxTerrain::SoilMaterial, SoilMaterial),
    INIT(SoilMaterial),
    FUNCTION(Voxel_bottom_get, GET(hyxTerrain::Voxel, bottom)),
    FUNCTION(Voxel_thickness_get, GET(hyxTerrain::Voxel, thickness)),
    FUNCTION(Voxel_solidMass_get, GET(hyxTerrain::Voxel, solidMass)),
    FUNCTION(Voxel_fluidMass_get, GET(hyxTerrain::Voxel, fluidMass)),
    FUNCTION(Voxel_compaction_get, GET(hyxTerrain::Voxel, compaction)),
    FUNCTION(Voxel_velocity_get, GET(hyxTerrain::Voxel, velocity)),
    FUNCTION(Voxel_material_get, GET(hyxTerrain::Voxel, material)),
    FUNCTION(delete_Voxel, DELETE(hyxTerrain::Voxel)),
    REGISTER(hyxTerrain::Voxel, Voxel),
    INIT(Voxel),
};

} // namespace

ROWS(terrain_rows);
