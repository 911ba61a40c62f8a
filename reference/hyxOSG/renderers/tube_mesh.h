// A tube as triangles, made here.
#pragma once

#include "reference/hyxOSG/renderers/surface_mesh.h"
#include "reference/hyxOSG/renderers/tube_drawing.h"

namespace hyxOSG {

class TubeMesh : public TubeDrawing {
public:
    TubeMesh();

    osg::Node* node() override { return m_surface.node(); }

    void show(std::vector<TubeStation> const& stations, double radius, osg::Vec4f const& color) override;

private:
    void addRing(TubeStation const& station, float radius, osg::Vec4f const& color);
    void addCap(std::size_t ring, bool atEnd);
    void makeTriangles(std::size_t rings);

    SurfaceMesh m_surface{"tube"};
    osg::ref_ptr<osg::Vec4Array> m_colors = new osg::Vec4Array;
    std::size_t m_rings = 0;
};

} // namespace hyxOSG
