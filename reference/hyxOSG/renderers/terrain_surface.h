// The surface of a terrain in one vertex buffer that is rewritten in place, row by row.
#pragma once

#include "platform/hyx/values/range_real.h"
#include "platform/hyx/values/vec4f.h"
#include "platform/hyxRender/color.h"
#include "platform/hyxTerrain/terrain.h"
#include "reference/hyxOSG/renderers/surface_mesh.h"
#include "reference/hyxOSG/renderers/told_scale.h"

#include <optional>

namespace hyxOSG {

/// What colours the surface; the first of these that is on decides.
struct TerrainColoring {
    bool materials = false;
    bool compaction = false;
    bool heights = false;
    bool defaultMaterial = true;
    hyx::RangeReal compactionRange;
    hyx::RangeReal heightRange; ///< metres, world
    hyxRender::ColorVector materialColors;
    hyx::Vec4f color = hyx::Vec4f(0.58f, 0.47f, 0.33f, 1);
};

class TerrainSurface {
public:
    explicit TerrainSurface(hyxTerrain::Terrain const& terrain);

    osg::Geometry* node() { return m_surface.node(); }

    /// Rewrites the rows that changed since the last time, or all where `all` is set; whether there were any.
    bool update(TerrainColoring const& coloring, bool all);

    /// What colours the surface as of the last update; nothing where no number does.
    std::optional<DrawnScale> scale(TerrainColoring const& coloring) const;

private:
    void makeTriangles();
    void writePositions(hyx::UInt row);
    void writeNormals(hyx::UInt row);
    void writeColors(hyx::UInt row, TerrainColoring const& coloring);
    void findHeightRange(hyx::RangeReal const& wanted);

    hyxTerrain::Terrain const& m_terrain;
    SurfaceMesh m_surface{"terrain"};
    osg::ref_ptr<osg::Vec4ubArray> m_colors = new osg::Vec4ubArray;
    hyx::UInt m_drawnRevision = 0;
    float m_lowest = 0, m_highest = 0; ///< of the colours, in metres above the terrain's origin
};

} // namespace hyxOSG
