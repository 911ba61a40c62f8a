// Triangle meshes for the renderer, built vertex by vertex.
#pragma once

#include <osg/Geometry>
#include <osg/ref_ptr>

#include <span>
#include <vector>

namespace hyxOSG {

/// Collects vertices and triangles and turns them into one indexed geometry in vertex buffers.
class MeshBuilder {
public:
    /// A point of a profile curve that is turned around the y axis.
    struct ProfilePoint {
        float radius;
        float y;
        float normalRadial; ///< the normal's part away from the axis
        float normalY;      ///< the normal's part along the axis
    };

    /// Returns the index of the new vertex.
    unsigned int addVertex(osg::Vec3 const& position, osg::Vec3 const& normal, osg::Vec2 const& texcoord);
    void addTriangle(unsigned int a, unsigned int b, unsigned int c);
    /// A flat four-sided face; the corners run counter-clockwise as seen from outside.
    void addQuad(osg::Vec3 const& a, osg::Vec3 const& b, osg::Vec3 const& c, osg::Vec3 const& d);
    /// The surface that `profile` sweeps around the y axis. Along an outer wall the profile runs downwards, along the
    /// wall of a hole upwards.
    void addRevolution(std::span<ProfilePoint const> profile, unsigned int segments);

    /// The mesh; null when it has no triangle. The builder is empty afterwards.
    osg::ref_ptr<osg::Geometry> build();

private:
    osg::ref_ptr<osg::Vec3Array> m_positions = new osg::Vec3Array;
    osg::ref_ptr<osg::Vec3Array> m_normals = new osg::Vec3Array;
    osg::ref_ptr<osg::Vec2Array> m_texcoords = new osg::Vec2Array;
    std::vector<unsigned int> m_indices;
};

/// Sets a geometry up for vertex buffers.
void useVertexBuffers(osg::Geometry& geometry);

} // namespace hyxOSG
