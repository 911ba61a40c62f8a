// Triangle meshes as collision shapes.
#pragma once

#include "platform/hyx/values/vec3_vector.h"
#include "platform/hyxCollide/shape.h"

namespace hyxCollide {

/// A surface of triangles. Closed meshes may move; the triangles face outwards when they run counter-clockwise.
class Trimesh : public Shape {
public:
    /// Three indices a triangle. Throws std::invalid_argument when there is no triangle, the number of indices is not a
    /// multiple of three, an index is not that of a vertex, or a coordinate is not finite.
    Trimesh(hyx::Vec3Vector const& vertices, hyx::UInt32Vector const& indices, hyx::Name const& name = hyx::Name());

    /// The corners, metres.
    hyx::Vec3Vector const& getVertices() const { return m_vertices; }

    /// The corners of all triangles, three for each.
    hyx::UInt32Vector const& getIndices() const { return m_indices; }

    /// How many triangles there are.
    hyx::UInt getNumTriangles() const { return m_indices.size() / 3; }

    /// Of length one; zero for a triangle without area. Throws std::out_of_range for a triangle that is not there.
    hyx::Vec3 getTriangleNormal(hyx::UInt triangle) const;
    /// Puts new places for all vertices, as many as before; throws std::invalid_argument otherwise.
    void updateVertices(hyx::Vec3Vector const& vertices);

    /// Whether every edge has a triangle on both sides.
    bool isClosed() const { return m_closed; }

    Type getType() const override { return TRIMESH; }

    /// 0 for an open mesh.
    hyx::Real getVolume() const override;
    void getBound(hyx::Vec3& lower, hyx::Vec3& upper) const override;

protected:
    ~Trimesh() override = default;

private:
    hyx::Vec3Vector m_vertices;
    hyx::UInt32Vector m_indices;
    bool m_closed;
};

} // namespace hyxCollide
