// Terrain and its layers of soil, down to single voxels.
#pragma once

#include "platform/hyx/objects/ref_ptr.h"
#include "platform/hyx/values/range_real.h"
#include "platform/hyx/values/string.h"
#include "platform/hyx/values/types.h"
#include "platform/hyx/values/vec4.h"
#include "platform/hyx/values/vec4f.h"
#include "platform/hyxRender/color.h"
#include "platform/hyxSDK/event_listener.h"
#include "platform/hyxTerrain/terrain.h"

#include <memory>

namespace osg {
class Group;
} // namespace osg

namespace hyxSDK {
class Simulation;
class TerrainInstance;
} // namespace hyxSDK

namespace hyxOSG {

class GeometryNode;
class ScalarColorMap;

/// Draws a terrain: its surface, its voxels with their values, its velocity field and its loose grains.
/// Follows the terrain by itself in each frame; only rows that changed are computed anew.
class TerrainVoxelRenderer : public hyxSDK::EventListener {
public:
    /// What colours the surface.
    enum RenderSelection { DEPTH = 0, COMPACTION = 1 };

    /// Draws `terrain` under `parent`. Throws `std::invalid_argument` for null.
    TerrainVoxelRenderer(hyxTerrain::Terrain* terrain, osg::Group* parent);
    /// Draws the terrain of `instance` under `parent`. Throws `std::invalid_argument` for null.
    TerrainVoxelRenderer(hyxSDK::TerrainInstance* instance, osg::Group* parent);

    /// The renderer of `terrain` among those whose terrain is in `simulation`; a null `simulation` looks at all. Null
    /// when there is none.
    static TerrainVoxelRenderer* find(hyxTerrain::Terrain const* terrain, hyxSDK::Simulation const* simulation);

    /// The terrain that is shown.
    hyxTerrain::Terrain* getTerrain() const;
    /// The node that holds all that is drawn.
    GeometryNode* getNode() const;

    /// Draws voxels as boxes, coloured by their mass at rest relative to the fullest.
    void setRenderVoxelSolidMass(bool enable);
    bool getRenderVoxelSolidMass() const;
    /// Draws voxels with mass on the move, coloured by that mass relative to the most.
    void setRenderVoxelFluidMass(bool enable);
    bool getRenderVoxelFluidMass() const;
    /// Draws the edges of all voxels.
    void setRenderVoxelBoundingBox(bool enable);
    bool getRenderVoxelBoundingBox() const;
    /// Draws the surface, on at first.
    void setRenderHeightField(bool enable);
    bool getRenderHeightField() const;
    /// Draws voxels as boxes, coloured by their compaction.
    void setRenderVoxelCompaction(bool enable);
    bool getRenderVoxelCompaction() const;
    /// Colours the surface by the kind of soil, with the colours of `setTerrainMaterialsColors`.
    void setRenderTerrainMaterials(bool enable);
    bool getRenderTerrainMaterials() const;
    /// Whether soil of kind 0 takes the first of the materials' colours (on at first) or the renderer's own.
    void setRenderDefaultTerrainMaterial(bool enable);
    bool getRenderDefaultTerrainMaterial() const;
    /// Draws a line with the velocity of each column on the move; a metre for each m/s.
    void setRenderVelocityField(bool enable);
    bool getRenderVelocityField() const;
    /// Draws the loose grains as round points, on at first.
    void setRenderSoilParticles(bool enable);
    bool getRenderSoilParticles() const;
    /// Draws the loose grains as meshes: those of `setSoilParticleMeshData`, or small rough stones.
    void setRenderSoilParticlesMesh(bool enable);
    bool getRenderSoilParticlesMesh() const;

    /// Colours the surface by its height. `range` are the heights in metres, world, of the first and the last colour;
    /// an endless one takes the lowest and the highest point.
    void setRenderHeights(bool enable, hyx::RangeReal range = hyx::RangeReal());
    bool getRenderHeights() const;
    /// Colours the surface by the compaction of its top. `range` as in `setRenderHeights`, 0.7 to 1.3 where it is
    /// endless.
    void setRenderCompaction(bool enable, hyx::RangeReal range = hyx::RangeReal());
    bool getRenderCompaction() const;

    /// The colours of the kinds of soil in the order of their indices; kinds without a colour take the last one.
    void setTerrainMaterialsColors(hyxRender::ColorVector const& colors);
    /// One for each material of the terrain.
    hyxRender::ColorVector getTerrainMaterialColors() const;
    /// The colour of the surface where nothing else colours it.
    void setColor(hyx::Vec4f color);
    hyx::Vec4f getColor() const;
    /// Of the lines that tell where soil moves.
    void setVelocityFieldLineColor(hyx::Vec4 const& color);
    /// The colour of a voxel with the largest value; the smallest is drawn dark blue.
    void setMaxVoxelValueColor(hyx::Vec4f const& color);

    /// The files of the mesh that stands for a grain and of its texture. The mesh is scaled to the grain's size.
    /// Throws `std::runtime_error` when a file cannot be read; an empty name goes back to the first mesh.
    void setSoilParticleMeshData(hyx::String model, hyx::String texture = hyx::String());
    /// The model that stands for a grain; empty for none.
    hyx::String getSoilParticleMeshModelFilename() const;
    /// The picture on that model; empty for none.
    hyx::String getSoilParticleMeshTextureFilename() const;

    /// The colours of the surface over its compaction or its height (metres, world), or else those of the voxels over
    /// their compaction or mass (kg), at rest before on the move; null where no number is a colour. The same object
    /// until they change; writing to it changes no picture.
    hyx::ref_ptr<ScalarColorMap> getColorScale();

    /// Brings what is drawn up to date now.
    void update();
    /// Takes the terrain out of the scene.
    void removeNotification() override;

protected:
    ~TerrainVoxelRenderer() override;

private:
    template <class T>
    void restyle(T& setting, T const& value);

    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxOSG
