// Soil as columns of layers.
#pragma once

#include "platform/hyx/values/types.h"
#include "platform/hyx/values/vec3f.h"
#include "platform/hyxTerrain/terrain.h"

#include <array>
#include <vector>

namespace hyxTerrain {

/// A portion of soil: so much mass of one kind.
struct Soil {
    hyx::Real mass = 0;
    hyx::UInt material = 0;
};

/// The columns of a terrain: piles of layers on rock, and on top of them what moves.
/// Masses are only ever moved from one place to another, in double precision; heights follow from masses.
class Columns {
public:
    static constexpr int maximumLayers = 6;
    /// Compaction of soil that has just come to rest.
    static constexpr hyx::Real loose = 0.85;
    static constexpr hyx::Real densest = 1.6;

    struct Layer {
        hyx::Real mass = 0;
        hyx::Real thickness = 0; ///< metres
        unsigned int material = 0;
    };

    struct Column {
        std::array<Layer, maximumLayers> layers;
        int count = 0;
        hyx::Real fluidMass = 0;
        hyx::Vec3f velocity;
        unsigned int fluidMaterial = 0;
    };

    Columns(hyx::UInt nx, hyx::UInt ny, hyx::Real elementSize, hyx::Real depth);

    hyx::UInt const nx, ny;
    hyx::Real const elementSize, area, rock; ///< m, m2, height of the rock in metres
    std::vector<SoilMaterial> materials;

    std::size_t index(hyx::UInt x, hyx::UInt y) const { return y * nx + x; }

    /// The column at a place in metres; false outside.
    bool find(hyx::Vec3 const& place, std::size_t& c) const;

    std::size_t size() const { return m_columns.size(); }

    Column const& column(std::size_t c) const { return m_columns[c]; }

    hyx::Real height(std::size_t c) const { return m_exactHeights[c]; }

    std::vector<float> const& heights() const { return m_heights; }

    /// Density relative to the material's.
    hyx::Real compaction(Layer const& layer) const {
        return layer.mass / (materials[layer.material].density * layer.thickness * area);
    }

    hyx::Real fluidThickness(std::size_t c) const;
    hyx::Real mass() const;

    /// Adds soil at rest on top of the layers.
    void addSolid(std::size_t c, Soil const& soil, hyx::Real compaction);
    /// Adds soil on the move, m/s. Soil of another kind that moves there comes to rest first.
    void addFluid(std::size_t c, Soil const& soil, hyx::Vec3f const& velocity);
    /// Takes soil of one kind from the top of a column, at most `thickness` metres; no mass is left when it is bare
    /// rock.
    Soil take(std::size_t c, hyx::Real thickness);
    /// Brings part (0 to 1) of what moves to rest.
    void settle(std::size_t c, hyx::Real part);
    /// Presses the layers down under `pressure` Pa at the surface, which fades with the depth as under a plate of
    /// `width` metres.
    void compact(std::size_t c, hyx::Real pressure, hyx::Real width);
    /// Turns the kind of the soil down to `depth` metres, with the volume kept.
    void changeMaterial(std::size_t c, unsigned int material, hyx::Real depth);
    void replaceMaterial(hyx::UInt material, SoilMaterial const& value);

    template <class Bytes>
    void exchangeState(Bytes& bytes) {
        bytes.expect(m_columns.size(), "columns in a terrain");
        bytes(materials, m_columns);
        for (std::size_t c = 0; c < m_columns.size() && bytes.restores(); ++c)
            refresh(c);
        bytes(m_exactHeights, m_changed, m_changedMarks);
    }

    /// Columns whose surface changed since the last call.
    std::vector<std::size_t> takeChanged();

    hyx::UInt revision() const { return m_revision; }

    hyx::UInt rowRevision(hyx::UInt y) const { return m_rowRevisions[y]; }

private:
    void push(Column& column, Layer const& layer);
    void mergeMostAlike(Column& column);
    void splitAt(Column& column, hyx::Real depth);
    bool hasBoundary(Column const& column, hyx::Real from, hyx::Real to) const;
    Layer layerOf(Soil const& soil, hyx::Real compaction) const;
    void refresh(std::size_t c);

    std::vector<Column> m_columns;
    std::vector<hyx::Real> m_exactHeights;
    std::vector<float> m_heights;
    std::vector<char> m_changedMarks;
    std::vector<std::size_t> m_changed;
    std::vector<hyx::UInt> m_rowRevisions;
    hyx::UInt m_revision = 1;
};

} // namespace hyxTerrain
