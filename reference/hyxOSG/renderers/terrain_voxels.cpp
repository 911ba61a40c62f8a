// Makes the boxes, edges and velocity arrows of soil voxels.
#include "reference/hyxOSG/renderers/terrain_voxels.h"

#include "platform/hyxTerrain/terrain_cells.h"
#include "reference/machinery/meshes/conversions.h"
#include "reference/machinery/shading/vertex_colors.h"

#include <osg/PolygonOffset>

#include <algorithm>

namespace hyxOSG {

using hyx::UInt;
using hyxTerrain::Voxel;

namespace {

osg::Vec4 const smallestColor(0.05f, 0.05f, 0.35f, 1);
osg::Vec4 const edgeColor(0.1f, 0.1f, 0.1f, 1);

} // namespace

TerrainVoxels::TerrainVoxels(hyxTerrain::Terrain const& terrain) : m_terrain(terrain) {
    useVertexColors(*m_boxes.node(), m_boxColors.get());
    // Edges lie in the faces, which would hide parts of them.
    m_boxes.node()->getOrCreateStateSet()->setAttributeAndModes(new osg::PolygonOffset(1, 1));
    m_lines->setName("terrain lines");
    m_lines->setUseDisplayList(false);
    m_lines->setUseVertexBufferObjects(true);
    m_lines->setDataVariance(osg::Object::DYNAMIC);
    m_lines->setVertexArray(m_linePoints);
    m_lines->setColorArray(m_lineColors, osg::Array::BIND_PER_VERTEX);
    m_lines->addPrimitiveSet(m_lineRange);
    useNoLight(*m_lines);
    m_group->addChild(m_boxes.node());
    m_group->addChild(m_lines);
}

void TerrainVoxels::update(VoxelLook const& look) {
    m_boxes.positions().clear();
    m_boxes.normals().clear();
    m_boxes.triangles().clear();
    m_boxColors->clear();
    m_linePoints->clear();
    m_lineColors->clear();
    osg::Vec4 const most = toOsg(look.maximumColor);
    // A cell that is drawn for what moves in it is not drawn twice.
    auto const isAtRest = [&look](Voxel const& voxel) {
        return voxel.solidMass > 0 && !(look.fluidMass && voxel.fluidMass > 0);
    };
    if (look.compaction)
        m_largestAtRest = addBoxes([&](Voxel const& voxel) { return isAtRest(voxel) ? voxel.compaction : 0; }, most);
    else if (look.solidMass)
        m_largestAtRest = addBoxes([&](Voxel const& voxel) { return isAtRest(voxel) ? voxel.solidMass : 0; }, most);
    if (look.fluidMass)
        m_largestMoving = addBoxes([](Voxel const& voxel) { return voxel.fluidMass; }, most);
    if (look.edges)
        addEdges();
    if (look.velocities)
        addVelocities(toOsg(look.velocityColor));
    m_boxColors->dirty();
    followOpacity(*m_boxes.node(), *m_boxColors);
    m_boxes.publish(true);
    m_linePoints->dirty();
    m_lineColors->dirty();
    followOpacity(*m_lines, *m_lineColors);
    m_lineRange->setCount(static_cast<int>(m_linePoints->size()));
    m_lines->dirtyBound();
}

/// Cubes: layers are thinner or thicker, and would tell more of how they are stored than of the soil.
std::vector<Voxel> TerrainVoxels::cells(UInt x, UInt y) const {
    return hyxTerrain::cellsOf(m_terrain, x, y, m_terrain.getElementSize());
}

// Boxes for the voxels with a value, coloured by its part of the largest one. Boxes that stand on the rock in one pile
// hide the sides of those beside them. Returns the largest value.
double TerrainVoxels::addBoxes(Value const& value, osg::Vec4 const& maximumColor) {
    UInt const nx = m_terrain.getNumColumnsX(), ny = m_terrain.getNumColumnsY();
    std::vector<Box> boxes;
    std::vector<double> covered(nx * ny, -m_terrain.getDepth());
    double largest = 0;
    for (UInt y = 0; y < ny; ++y)
        for (UInt x = 0; x < nx; ++x)
            for (Voxel const& voxel : cells(x, y)) {
                double const part = value(voxel), top = voxel.bottom + voxel.thickness;
                if (part <= 0)
                    continue;
                boxes.push_back({x, y, voxel.bottom, top, part});
                largest = std::max(largest, part);
                if (double& pile = covered[y * nx + x]; voxel.bottom <= pile + 1e-9)
                    pile = top;
            }
    for (Box const& box : boxes) {
        auto const share = static_cast<float>(box.value / largest);
        addBox(box, covered, smallestColor * (1 - share) + maximumColor * share);
    }
    return largest;
}

std::optional<DrawnScale> TerrainVoxels::scale(VoxelLook const& look) const {
    bool const atRest = look.compaction || look.solidMass;
    if (!atRest && !look.fluidMass)
        return std::nullopt;
    return DrawnScale{{smallestColor, toOsg(look.maximumColor)}, 0, atRest ? m_largestAtRest : m_largestMoving};
}

// Faces that lie against another box are left out; the lowest one, on the rock, too.
void TerrainVoxels::addBox(Box const& box, std::vector<double> const& covered, osg::Vec4 const& color) {
    UInt const nx = m_terrain.getNumColumnsX(), ny = m_terrain.getNumColumnsY();
    auto const size = static_cast<float>(m_terrain.getElementSize());
    osg::Vec3 const corner((static_cast<float>(box.x) - 0.5f) * size, (static_cast<float>(box.y) - 0.5f) * size, 0);
    osg::Vec3 const alongX(size, 0, 0), alongY(0, size, 0);
    if (box.top >= covered[box.y * nx + box.x])
        addFace(corner + osg::Vec3(0, 0, static_cast<float>(box.top)), alongX, alongY, color);
    auto const side = [&](long dx, long dy, osg::Vec3 const& from, osg::Vec3 const& along) {
        long const nextX = static_cast<long>(box.x) + dx, nextY = static_cast<long>(box.y) + dy;
        bool const outside = nextX < 0 || nextY < 0 || nextX >= static_cast<long>(nx) || nextY >= static_cast<long>(ny);
        double const bottom = outside ? box.bottom : std::max(box.bottom, covered[nextY * nx + nextX]);
        if (bottom < box.top - 1e-9)
            addFace(from + osg::Vec3(0, 0, static_cast<float>(bottom)), along,
                    osg::Vec3(0, 0, static_cast<float>(box.top - bottom)), color);
    };
    side(0, -1, corner, alongX);
    side(1, 0, corner + alongX, alongY);
    side(0, 1, corner + alongX + alongY, -alongX);
    side(-1, 0, corner + alongY, -alongY);
}

void TerrainVoxels::addFace(osg::Vec3 const& a, osg::Vec3 const& u, osg::Vec3 const& v, osg::Vec4 const& color) {
    auto const first = static_cast<unsigned int>(m_boxes.positions().size());
    osg::Vec3 normal = u ^ v;
    normal.normalize();
    for (osg::Vec3 const& corner : {a, a + u, a + u + v, a + v}) {
        m_boxes.positions().push_back(corner);
        m_boxes.normals().push_back(normal);
        m_boxColors->push_back(color);
    }
    for (unsigned int corner : {0u, 1u, 2u, 0u, 2u, 3u})
        m_boxes.triangles().push_back(first + corner);
}

void TerrainVoxels::addEdges() {
    auto const size = static_cast<float>(m_terrain.getElementSize());
    for (UInt y = 0; y < m_terrain.getNumColumnsY(); ++y)
        for (UInt x = 0; x < m_terrain.getNumColumnsX(); ++x)
            for (Voxel const& voxel : cells(x, y)) {
                float const low = static_cast<float>(voxel.bottom),
                            high = static_cast<float>(voxel.bottom + voxel.thickness);
                osg::Vec2 const corners[] = {{-0.5f, -0.5f}, {0.5f, -0.5f}, {0.5f, 0.5f}, {-0.5f, 0.5f}};
                for (int i = 0; i < 4; ++i) {
                    auto const at = [&](osg::Vec2 const& corner, float z) {
                        return osg::Vec3((static_cast<float>(x) + corner.x()) * size,
                                         (static_cast<float>(y) + corner.y()) * size, z);
                    };
                    osg::Vec2 const &a = corners[i], &b = corners[(i + 1) % 4];
                    addLine(at(a, low), at(b, low), edgeColor);
                    addLine(at(a, high), at(b, high), edgeColor);
                    addLine(at(a, low), at(a, high), edgeColor);
                }
            }
}

void TerrainVoxels::addVelocities(osg::Vec4 const& color) {
    auto const size = static_cast<float>(m_terrain.getElementSize());
    for (UInt y = 0; y < m_terrain.getNumColumnsY(); ++y)
        for (UInt x = 0; x < m_terrain.getNumColumnsX(); ++x)
            if (m_terrain.getFluidMass(x, y) > 0) {
                // A little above the surface, which would hide the lines.
                osg::Vec3 const from(static_cast<float>(x) * size, static_cast<float>(y) * size,
                                     static_cast<float>(m_terrain.getHeight(x, y)) + 0.1f * size);
                addLine(from, from + osg::Vec3(toOsg(m_terrain.getFluidVelocity(x, y))), color);
            }
}

void TerrainVoxels::addLine(osg::Vec3 const& from, osg::Vec3 const& to, osg::Vec4 const& color) {
    m_linePoints->push_back(from);
    m_linePoints->push_back(to);
    m_lineColors->push_back(color);
    m_lineColors->push_back(color);
}

} // namespace hyxOSG
