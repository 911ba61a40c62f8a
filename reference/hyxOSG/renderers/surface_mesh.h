// A lit surface in one vertex buffer that is rewritten in place.
#pragma once

#include <osg/Geometry>

#include <vector>

namespace hyxOSG {

class SurfaceMesh {
public:
    explicit SurfaceMesh(std::string const& name);
    SurfaceMesh(SurfaceMesh const&) = delete;
    SurfaceMesh& operator=(SurfaceMesh const&) = delete;

    osg::Geometry* node() const { return m_geometry.get(); }

    osg::Vec3Array& positions() { return *m_positions; }

    osg::Vec3Array& normals() { return *m_normals; }

    osg::DrawElementsUInt& triangles() { return *m_triangles; }

    // Normals from the triangles around each vertex, weighted with their areas.
    void computeNormals();
    // Shows what was written to positions and normals, and to the triangles where `topology` is set.
    void publish(bool topology);

private:
    osg::ref_ptr<osg::Geometry> m_geometry = new osg::Geometry;
    osg::ref_ptr<osg::Vec3Array> m_positions = new osg::Vec3Array;
    osg::ref_ptr<osg::Vec3Array> m_normals = new osg::Vec3Array;
    osg::ref_ptr<osg::DrawElementsUInt> m_triangles = new osg::DrawElementsUInt(GL_TRIANGLES);
};

} // namespace hyxOSG
