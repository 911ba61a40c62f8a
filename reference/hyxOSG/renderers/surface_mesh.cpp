// Computes the normals of a regular surface, and hands it to the card.
#include "reference/hyxOSG/renderers/surface_mesh.h"

#include <algorithm>

namespace hyxOSG {

SurfaceMesh::SurfaceMesh(std::string const& name) {
    m_geometry->setName(name);
    m_geometry->setUseDisplayList(false);
    m_geometry->setUseVertexBufferObjects(true);
    m_geometry->setDataVariance(osg::Object::DYNAMIC);
    m_geometry->setVertexArray(m_positions);
    m_geometry->setNormalArray(m_normals, osg::Array::BIND_PER_VERTEX);
    m_geometry->addPrimitiveSet(m_triangles);
}

void SurfaceMesh::computeNormals() {
    m_normals->resize(m_positions->size());
    std::fill(m_normals->begin(), m_normals->end(), osg::Vec3());
    auto const& positions = *m_positions;
    for (std::size_t i = 0; i + 2 < m_triangles->size(); i += 3) {
        auto const a = (*m_triangles)[i];
        auto const b = (*m_triangles)[i + 1];
        auto const c = (*m_triangles)[i + 2];
        auto const area = (positions[b] - positions[a]) ^ (positions[c] - positions[a]);
        (*m_normals)[a] += area;
        (*m_normals)[b] += area;
        (*m_normals)[c] += area;
    }
    for (auto& normal : *m_normals)
        normal.normalize();
}

void SurfaceMesh::publish(bool topology) {
    m_positions->dirty();
    m_normals->dirty();
    if (topology)
        m_triangles->dirty();
    m_geometry->dirtyBound();
}

} // namespace hyxOSG
