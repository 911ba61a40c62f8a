// Gathers vertices and triangles into vertex buffers.
#include "reference/machinery/meshes/mesh_builder.h"

#include <cmath>
#include <limits>

namespace hyxOSG {

void useVertexBuffers(osg::Geometry& geometry) {
    geometry.setUseDisplayList(false);
    geometry.setUseVertexBufferObjects(true);
}

unsigned int MeshBuilder::addVertex(osg::Vec3 const& position, osg::Vec3 const& normal, osg::Vec2 const& texcoord) {
    m_positions->push_back(position);
    m_normals->push_back(normal);
    m_texcoords->push_back(texcoord);
    return static_cast<unsigned int>(m_positions->size() - 1);
}

void MeshBuilder::addTriangle(unsigned int a, unsigned int b, unsigned int c) {
    m_indices.insert(m_indices.end(), {a, b, c});
}

void MeshBuilder::addQuad(osg::Vec3 const& a, osg::Vec3 const& b, osg::Vec3 const& c, osg::Vec3 const& d) {
    osg::Vec3 normal = (b - a) ^ (d - a);
    normal.normalize();
    unsigned int const first = addVertex(a, normal, {0, 0});
    addVertex(b, normal, {1, 0});
    addVertex(c, normal, {1, 1});
    addVertex(d, normal, {0, 1});
    addTriangle(first, first + 1, first + 2);
    addTriangle(first, first + 2, first + 3);
}

void MeshBuilder::addRevolution(std::span<ProfilePoint const> profile, unsigned int segments) {
    auto const base = static_cast<unsigned int>(m_positions->size());
    auto const columns = segments + 1; // the seam has its vertices twice, for the texture
    float widest = 0;
    for (ProfilePoint const& point : profile)
        widest = std::max(widest, point.radius);
    for (std::size_t row = 0; row < profile.size(); ++row) {
        ProfilePoint const& point = profile[row];
        bool const flat = point.normalRadial == 0.0f; // an end face takes its texture from above
        for (unsigned int column = 0; column < columns; ++column) {
            float const u = static_cast<float>(column) / static_cast<float>(segments);
            // The last column repeats the first one exactly, which keeps closed meshes closed.
            float const angle =
                2 * static_cast<float>(osg::PI) * static_cast<float>(column % segments) / static_cast<float>(segments);
            float const x = std::cos(angle), z = -std::sin(angle);
            float const v = 1 - static_cast<float>(row) / static_cast<float>(profile.size() - 1);
            osg::Vec2 const fromAbove(0.5f + 0.5f * x * point.radius / widest, 0.5f - 0.5f * z * point.radius / widest);
            addVertex({x * point.radius, point.y, z * point.radius},
                      {x * point.normalRadial, point.normalY, z * point.normalRadial},
                      flat ? fromAbove : osg::Vec2(u, v));
        }
    }
    for (unsigned int row = 0; row + 1 < profile.size(); ++row)
        for (unsigned int column = 0; column < segments; ++column) {
            unsigned int const upper = base + row * columns + column, lower = upper + columns;
            if (profile[row + 1].radius > 0)
                addTriangle(upper, lower, lower + 1);
            if (profile[row].radius > 0)
                addTriangle(upper, lower + 1, upper + 1);
        }
}

osg::ref_ptr<osg::Geometry> MeshBuilder::build() {
    if (m_indices.empty())
        return nullptr;
    osg::ref_ptr<osg::Geometry> const geometry = new osg::Geometry;
    geometry->setVertexArray(m_positions);
    geometry->setNormalArray(m_normals, osg::Array::BIND_PER_VERTEX);
    geometry->setTexCoordArray(0, m_texcoords, osg::Array::BIND_PER_VERTEX);
    if (m_positions->size() <= std::numeric_limits<GLushort>::max())
        geometry->addPrimitiveSet(new osg::DrawElementsUShort(GL_TRIANGLES, m_indices.begin(), m_indices.end()));
    else
        geometry->addPrimitiveSet(new osg::DrawElementsUInt(GL_TRIANGLES, m_indices.begin(), m_indices.end()));
    useVertexBuffers(*geometry);
    *this = MeshBuilder();
    return geometry;
}

} // namespace hyxOSG
