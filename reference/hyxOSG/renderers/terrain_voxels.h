// The voxels of a terrain as boxes and edges, and its velocity field as lines.
#pragma once

#include "platform/hyx/values/vec4f.h"
#include "platform/hyxTerrain/terrain.h"
#include "reference/hyxOSG/renderers/surface_mesh.h"
#include "reference/hyxOSG/renderers/told_scale.h"

#include <osg/Group>

#include <functional>
#include <optional>
#include <vector>

namespace hyxOSG {

/// What is drawn of the voxels.
struct VoxelLook {
    bool solidMass = false;
    bool fluidMass = false;
    bool compaction = false;
    bool edges = false;
    bool velocities = false;
    hyx::Vec4f maximumColor = hyx::Vec4f(1, 0.2f, 0.1f, 1);
    hyx::Vec4f velocityColor = hyx::Vec4f(1, 1, 0, 1);

    bool drawsSomething() const { return solidMass || fluidMass || compaction || edges || velocities; }
};

class TerrainVoxels {
public:
    explicit TerrainVoxels(hyxTerrain::Terrain const& terrain);

    osg::Node* node() { return m_group.get(); }

    /// Draws everything anew.
    void update(VoxelLook const& look);

    /// What colours the boxes as of the last update; nothing where there are none. Soil at rest comes first.
    std::optional<DrawnScale> scale(VoxelLook const& look) const;

private:
    using Value = std::function<double(hyxTerrain::Voxel const&)>;

    struct Box {
        hyx::UInt x, y;
        double bottom, top;
        double value;
    };

    std::vector<hyxTerrain::Voxel> cells(hyx::UInt x, hyx::UInt y) const;
    double addBoxes(Value const& value, osg::Vec4 const& maximumColor);
    void addBox(Box const& box, std::vector<double> const& covered, osg::Vec4 const& color);
    void addFace(osg::Vec3 const& a, osg::Vec3 const& u, osg::Vec3 const& v, osg::Vec4 const& color);
    void addEdges();
    void addVelocities(osg::Vec4 const& color);
    void addLine(osg::Vec3 const& from, osg::Vec3 const& to, osg::Vec4 const& color);

    hyxTerrain::Terrain const& m_terrain;
    SurfaceMesh m_boxes{"terrain voxels"};
    osg::ref_ptr<osg::Vec4Array> m_boxColors = new osg::Vec4Array;
    osg::ref_ptr<osg::Geometry> m_lines = new osg::Geometry;
    osg::ref_ptr<osg::Vec3Array> m_linePoints = new osg::Vec3Array;
    osg::ref_ptr<osg::Vec4Array> m_lineColors = new osg::Vec4Array;
    osg::ref_ptr<osg::DrawArrays> m_lineRange = new osg::DrawArrays(GL_LINES, 0, 0);
    osg::ref_ptr<osg::Group> m_group = new osg::Group;
    double m_largestAtRest = 0, m_largestMoving = 0; ///< of the values that are colours
};

} // namespace hyxOSG
