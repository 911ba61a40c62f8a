// Makes meshes of collision meshes and height fields.
#include "reference/machinery/meshes/surface_meshes.h"

#include "platform/hyxCollide/height_field.h"
#include "platform/hyxCollide/trimesh.h"
#include "reference/machinery/meshes/conversions.h"
#include "reference/machinery/meshes/crease_normals.h"
#include "reference/machinery/meshes/mesh_builder.h"
#include "reference/machinery/meshes/triangle_order.h"

#include <algorithm>
#include <cmath>

namespace hyxOSG {
namespace {

/// Projects each vertex along the largest part of its normal, the picture once over the mesh's bounding box.
void projectTexture(osg::Geometry& mesh) {
    auto const& positions = static_cast<osg::Vec3Array const&>(*mesh.getVertexArray());
    auto const& normals = static_cast<osg::Vec3Array const&>(*mesh.getNormalArray());
    osg::BoundingBox const box = mesh.getBoundingBox();
    osg::Vec3 const size = box._max - box._min;
    osg::ref_ptr<osg::Vec2Array> const texcoords = new osg::Vec2Array;
    texcoords->reserve(positions.size());
    for (std::size_t i = 0; i < positions.size(); ++i) {
        osg::Vec3 const& n = normals[i];
        int const across = std::abs(n.x()) > std::abs(n.y()) ? (std::abs(n.x()) > std::abs(n.z()) ? 0 : 2)
                                                             : (std::abs(n.y()) > std::abs(n.z()) ? 1 : 2);
        int const s = across == 0 ? 1 : 0, t = across == 2 ? 1 : 2;
        osg::Vec3 const place = positions[i] - box._min;
        texcoords->push_back({place[s] / std::max(size[s], 1e-9f), place[t] / std::max(size[t], 1e-9f)});
    }
    mesh.setTexCoordArray(0, texcoords, osg::Array::BIND_PER_VERTEX);
}

} // namespace

osg::ref_ptr<osg::Geometry> trimeshSurface(hyxCollide::Trimesh const& mesh) {
    osg::ref_ptr<osg::Vec3Array> const positions = new osg::Vec3Array;
    positions->reserve(mesh.getVertices().size());
    for (hyx::Vec3 const& vertex : mesh.getVertices())
        positions->push_back(toOsg(vertex));
    auto const& indices = mesh.getIndices();
    osg::ref_ptr<osg::Geometry> const surface = new osg::Geometry;
    surface->setVertexArray(positions);
    surface->addPrimitiveSet(new osg::DrawElementsUInt(GL_TRIANGLES, indices.begin(), indices.end()));
    setCreaseNormals(*surface);
    projectTexture(*surface);
    orderTriangles(*surface);
    useVertexBuffers(*surface);
    return surface;
}

osg::ref_ptr<osg::Geometry> heightFieldSurface(hyxCollide::HeightField const& field) {
    hyx::UInt const columns = field.getResolutionX(), rows = field.getResolutionY();
    double const stepX = field.getSizeX() / static_cast<double>(columns - 1);
    double const stepY = field.getSizeY() / static_cast<double>(rows - 1);
    MeshBuilder mesh;
    for (hyx::UInt j = 0; j < rows; ++j)
        for (hyx::UInt i = 0; i < columns; ++i) {
            hyx::UInt const west = i ? i - 1 : i, east = std::min(i + 1, columns - 1);
            hyx::UInt const south = j ? j - 1 : j, north = std::min(j + 1, rows - 1);
            double const slopeX =
                (field.getHeight(east, j) - field.getHeight(west, j)) / (stepX * static_cast<double>(east - west));
            double const slopeY =
                (field.getHeight(i, north) - field.getHeight(i, south)) / (stepY * static_cast<double>(north - south));
            osg::Vec3 normal(static_cast<float>(-slopeX), static_cast<float>(-slopeY), 1);
            normal.normalize();
            mesh.addVertex(toOsg(field.getVertex(i, j)), normal,
                           {static_cast<float>(i) / static_cast<float>(columns - 1),
                            static_cast<float>(j) / static_cast<float>(rows - 1)});
        }
    for (hyx::UInt j = 0; j + 1 < rows; ++j)
        for (hyx::UInt i = 0; i + 1 < columns; ++i) {
            auto const corner = static_cast<unsigned int>(j * columns + i);
            auto const above = corner + static_cast<unsigned int>(columns);
            mesh.addTriangle(corner, corner + 1, above + 1);
            mesh.addTriangle(corner, above + 1, above);
        }
    return mesh.build();
}

} // namespace hyxOSG
