// Checks meshes when they are made, and finds out whether they are closed.
#include "platform/hyxCollide/trimesh.h"

#include "reference/hyx/values/number_checks.h"
#include "reference/machinery/bullet/shape_mass.h"

#include <cstdint>
#include <stdexcept>
#include <unordered_map>

namespace hyxCollide {

namespace {

void checkVertices(hyx::Vec3Vector const& vertices) {
    for (hyx::Vec3 const& vertex : vertices)
        hyx::requireFinite(vertex, "the vertices of a mesh");
}

void checkIndices(hyx::UInt32Vector const& indices, std::size_t numVertices) {
    if (indices.empty() || indices.size() % 3 != 0)
        throw std::invalid_argument("a mesh needs at least one triangle, and three indices for each");
    for (unsigned int index : indices)
        if (index >= numVertices)
            throw std::invalid_argument("an index of the mesh is not that of a vertex");
}

/// In a closed mesh every edge is run through as often in one direction as in the other.
bool findClosed(hyx::UInt32Vector const& indices) {
    std::unordered_map<std::uint64_t, int> balance;
    for (std::size_t i = 0; i < indices.size(); i += 3)
        for (int corner = 0; corner < 3; ++corner) {
            std::uint64_t const from = indices[i + corner];
            std::uint64_t const to = indices[i + (corner + 1) % 3];
            if (from < to)
                ++balance[from << 32 | to];
            else
                --balance[to << 32 | from];
        }
    for (auto const& [edge, count] : balance)
        if (count != 0)
            return false;
    return true;
}

} // namespace

Trimesh::Trimesh(hyx::Vec3Vector const& vertices, hyx::UInt32Vector const& indices, hyx::Name const& name)
    : m_vertices(vertices), m_indices(indices) {
    checkVertices(vertices);
    checkIndices(indices, vertices.size());
    m_closed = findClosed(indices);
    setName(name);
}

hyx::Vec3 Trimesh::getTriangleNormal(hyx::UInt triangle) const {
    if (triangle >= getNumTriangles())
        throw std::out_of_range("the mesh has no such triangle");
    hyx::Vec3 const& a = m_vertices[m_indices[3 * triangle]];
    hyx::Vec3 const& b = m_vertices[m_indices[3 * triangle + 1]];
    hyx::Vec3 const& c = m_vertices[m_indices[3 * triangle + 2]];
    return (b - a).cross(c - a).normal();
}

void Trimesh::updateVertices(hyx::Vec3Vector const& vertices) {
    if (vertices.size() != m_vertices.size())
        throw std::invalid_argument("a mesh is updated with as many vertices as it has");
    checkVertices(vertices);
    m_vertices = vertices;
    changed();
}

hyx::Real Trimesh::getVolume() const {
    return massOf(*this).volume;
}

void Trimesh::getBound(hyx::Vec3& lower, hyx::Vec3& upper) const {
    lower = upper = m_vertices.front();
    for (hyx::Vec3 const& vertex : m_vertices)
        for (int i = 0; i < 3; ++i) {
            lower[i] = std::min(lower[i], vertex[i]);
            upper[i] = std::max(upper[i], vertex[i]);
        }
}

} // namespace hyxCollide
