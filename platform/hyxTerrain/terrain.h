// Soil in columns: digging, sliding, compaction, layers.
#pragma once

#include "platform/hyx/objects/object.h"
#include "platform/hyx/particles/particle_system.h"
#include "platform/hyx/values/types.h"
#include "platform/hyx/values/vec3.h"
#include "platform/hyxTerrain/dig_tool.h"

#include <memory>
#include <vector>

namespace hyxTerrain {

/// What soil of one kind is like.
struct SoilMaterial {
    hyx::Real density = 1500;        ///< kg/m3 at compaction 1
    hyx::Real reposeAngle = 0.6;     ///< radians: the steepest slope that stands
    hyx::Real compressibility = 0.1; ///< rise of the compaction for each tenfold pressure above `firstPressure`
    hyx::Real firstPressure = 5e3;   ///< Pa below which the soil does not give way
    hyx::Real shearLength = 0.02;    ///< metres of shear in which friction on the soil comes to 63 % of its most
};

/// One layer of a column, from `bottom` up.
struct Voxel {
    hyx::Real bottom = 0;     ///< metres above the terrain's origin
    hyx::Real thickness = 0;  ///< metres
    hyx::Real solidMass = 0;  ///< kg at rest
    hyx::Real fluidMass = 0;  ///< kg on the move
    hyx::Real compaction = 1; ///< density relative to the material's
    hyx::Vec3 velocity;       ///< m/s of the mass on the move
    hyx::UInt material = 0;   ///< index of its `SoilMaterial`
};

/// Soil as a field of columns, each a pile of layers with a mass and a compaction.
/// Slopes that are too steep slide, loads compact, tools loosen soil into grains, and grains at rest become soil again;
/// through all of that the mass is conserved.
/// Column (0, 0) has its centre at the origin of the terrain, x and y grow along the world's axes.
class Terrain : public hyx::Object {
public:
    /// A flat terrain of `columnsX` by `columnsY` columns of `elementSize` metres, with its surface at height 0 and
    /// `depth` metres of soil. Throws `std::invalid_argument` for fewer than 2 columns along a side, more than 4096, or
    /// sizes that are not above 0.
    Terrain(hyx::UInt columnsX, hyx::UInt columnsY, hyx::Real elementSize, hyx::Real depth);

    /// How many columns of soil there are along X.
    hyx::UInt getNumColumnsX() const;
    /// How many columns of soil there are along Y.
    hyx::UInt getNumColumnsY() const;
    /// Side of a column in metres.
    hyx::Real getElementSize() const;
    /// Depth in metres of the soil at first; below it is rock.
    hyx::Real getDepth() const;
    /// Where column (0, 0) at height 0 is in the world, in metres.
    void setPosition(hyx::Vec3 const& position);
    hyx::Vec3 getPosition() const;

    /// The surface of a column in metres above the origin. Throws `std::out_of_range` outside the terrain.
    hyx::Real getHeight(hyx::UInt x, hyx::UInt y) const;
    /// Gives a column a new surface by adding undisturbed soil or taking soil away; the mass changes with it.
    /// Heights below the rock are raised to it.
    void setHeight(hyx::UInt x, hyx::UInt y, hyx::Real height);
    /// All surfaces, x running fastest. The place of the array never changes.
    std::vector<float> const& getHeights() const;
    /// The surface in metres, world, at a place in the world; the border's height outside of the terrain.
    hyx::Real getWorldHeight(hyx::Real x, hyx::Real y) const;
    /// The upward unit normal of the surface at a place in the world.
    hyx::Vec3 getWorldNormal(hyx::Real x, hyx::Real y) const;

    /// Adds a kind of soil and returns its index; kind 0 is there at first.
    /// Throws `std::invalid_argument` for a density, angle or pressure that is not above 0.
    hyx::UInt addMaterial(SoilMaterial const& material);
    /// How many materials the soil has.
    hyx::UInt getNumMaterials() const;
    SoilMaterial getMaterial(hyx::UInt index) const;
    /// Replaces kind `index`. The masses of its layers stay, so with a new density their surfaces move.
    void setMaterial(hyx::UInt index, SoilMaterial const& material);
    /// Turns the soil of a column down to `depth` metres into kind `index`, with the volume kept.
    void setColumnMaterial(hyx::UInt x, hyx::UInt y, hyx::UInt index, hyx::Real depth);

    /// The layers of a column from the rock up; the last one is the soil on the move, where there is any.
    std::vector<Voxel> getVoxels(hyx::UInt x, hyx::UInt y) const;
    /// Kind and compaction of the top of a column; a column of bare rock gives kind 0 and compaction 1.
    hyx::UInt getSurfaceMaterial(hyx::UInt x, hyx::UInt y) const;
    /// The density of the top of a column relative to its material's.
    hyx::Real getSurfaceCompaction(hyx::UInt x, hyx::UInt y) const;
    /// Mass in kg on the move in a column, and its velocity in m/s.
    hyx::Real getFluidMass(hyx::UInt x, hyx::UInt y) const;
    /// Of the loose soil in a column, m/s.
    hyx::Vec3 getFluidVelocity(hyx::UInt x, hyx::UInt y) const;
    /// All soil in kg: columns, grains, and what was dug but makes no whole grain yet.
    hyx::Real getMass() const;

    /// Puts `mass` kg of loose soil on a column.
    void addMass(hyx::UInt x, hyx::UInt y, hyx::Real mass, hyx::UInt material = 0);
    /// Takes the soil above `height` from a column and returns its mass in kg; the soil is gone.
    hyx::Real removeAbove(hyx::UInt x, hyx::UInt y, hyx::Real height);
    /// Frees the soil above `height` of a column as grains, which start with `velocity`. Returns the mass in kg.
    hyx::Real dig(hyx::UInt x, hyx::UInt y, hyx::Real height, hyx::Vec3 const& velocity = hyx::Vec3());
    /// Loads a column with `pressure` Pa and returns how far in metres the surface sank.
    hyx::Real compact(hyx::UInt x, hyx::UInt y, hyx::Real pressure);
    /// Lets every slope slide that is too steep, also where nothing has changed.
    void disturb();

    /// Adds a tool that digs while the terrain is stepped; null is ignored.
    void addTool(DigTool* tool);
    /// Removes a tool; false when it was not there.
    bool removeTool(DigTool* tool);
    /// What digs here.
    std::vector<hyx::ref_ptr<DigTool>> const& getTools() const;
    /// The grains freed by digging. Their gravity is that of all the soil: it drives the slides and presses on tools.
    hyx::ParticleSystem* getSoilParticles() const;
    /// Whether digging makes grains (true at first) or piles the soil up beside the tool.
    void setEnableSoilParticles(bool enable);
    bool getEnableSoilParticles() const;

    /// Advances tools, slides and grains by `timeStep` seconds. Throws `std::invalid_argument` unless it is above 0.
    void step(hyx::Real timeStep);

    /// Rises with every change of the soil.
    hyx::UInt getRevision() const;
    /// The revision at which row `y` changed last.
    hyx::UInt getRowRevision(hyx::UInt y) const;

protected:
    ~Terrain() override;

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxTerrain
