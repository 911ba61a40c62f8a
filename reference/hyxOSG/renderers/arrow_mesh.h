// Any number of arrows in one vertex buffer, rewritten in place.
#pragma once

#include <osg/Geometry>
#include <osg/Vec3d>
#include <osg/Vec4f>

namespace hyxOSG {

class ArrowMesh {
public:
    struct Style {
        float coneHeight;
        float radius;
    };

    ArrowMesh();
    ArrowMesh(ArrowMesh const&) = delete;
    ArrowMesh& operator=(ArrowMesh const&) = delete;

    osg::Geometry* node() const { return m_geometry.get(); }

    // One round: begin(), add() for each arrow, end().
    void begin();
    // An arrow from `tail` along `span`, whose length is the arrow's. A short arrow has a smaller tip; one without
    // length, or not finite, is left out.
    void add(osg::Vec3d const& tail, osg::Vec3d const& span, osg::Vec4f const& color, Style const& style);
    void end();

private:
    void addVertex(osg::Vec3d const& position, osg::Vec3d const& normal, osg::Vec4f const& color);

    osg::ref_ptr<osg::Geometry> m_geometry = new osg::Geometry;
    osg::ref_ptr<osg::Vec3Array> m_positions = new osg::Vec3Array;
    osg::ref_ptr<osg::Vec3Array> m_normals = new osg::Vec3Array;
    osg::ref_ptr<osg::Vec4Array> m_colors = new osg::Vec4Array;
    osg::ref_ptr<osg::DrawElementsUInt> m_triangles = new osg::DrawElementsUInt(GL_TRIANGLES);
};

} // namespace hyxOSG
