// Makes rings and caps of triangles along a curve.
#include "reference/hyxOSG/renderers/tube_mesh.h"

#include "reference/machinery/meshes/conversions.h"
#include "reference/machinery/shading/vertex_colors.h"

#include <cmath>
#include <numbers>

namespace hyxOSG {

namespace {

constexpr unsigned int tubeSides = 12;

} // namespace

TubeMesh::TubeMesh() {
    useVertexColors(*m_surface.node(), m_colors.get());
}

void TubeMesh::show(std::vector<TubeStation> const& stations, double radius, osg::Vec4f const& color) {
    m_surface.positions().clear();
    m_surface.normals().clear();
    m_colors->clear();
    for (TubeStation const& station : stations)
        addRing(station, static_cast<float>(radius), shiftToRed(color, station.value));
    if (!stations.empty()) {
        addCap(0, false);
        addCap(stations.size() - 1, true);
    }
    // The triangles depend on the number of rings only.
    bool const other = m_rings != stations.size();
    if (other)
        makeTriangles(stations.size());
    m_colors->dirty();
    followOpacity(*m_surface.node(), *m_colors);
    m_surface.publish(other);
}

void TubeMesh::addRing(TubeStation const& station, float radius, osg::Vec4f const& color) {
    for (unsigned int i = 0; i < tubeSides; ++i) {
        double const angle = 2 * std::numbers::pi * i / tubeSides;
        osg::Vec3 const normal = toOsg(station.rotation * hyx::Vec3(std::cos(angle), std::sin(angle), 0));
        m_surface.positions().push_back(osg::Vec3(toOsg(station.position)) + normal * radius);
        m_surface.normals().push_back(normal);
        m_colors->push_back(color);
    }
}

// A cap has corners of its own, which face along the tube.
void TubeMesh::addCap(std::size_t ring, bool atEnd) {
    auto const first = static_cast<unsigned int>(ring * tubeSides);
    osg::Vec3 const a = m_surface.normals()[first], b = m_surface.normals()[first + tubeSides / 4];
    osg::Vec3 const outward = atEnd ? a ^ b : b ^ a;
    for (unsigned int i = 0; i < tubeSides; ++i) {
        m_surface.positions().push_back(osg::Vec3(m_surface.positions()[first + i]));
        m_surface.normals().push_back(outward);
        m_colors->push_back(osg::Vec4((*m_colors)[first + i]));
    }
}

void TubeMesh::makeTriangles(std::size_t rings) {
    m_rings = rings;
    osg::DrawElementsUInt& triangles = m_surface.triangles();
    triangles.clear();
    for (std::size_t ring = 0; ring + 1 < rings; ++ring)
        for (unsigned int i = 0; i < tubeSides; ++i) {
            auto const low = static_cast<unsigned int>(ring * tubeSides);
            unsigned int const a = low + i, b = low + (i + 1) % tubeSides, c = a + tubeSides, d = b + tubeSides;
            for (unsigned int corner : {a, b, d, a, d, c})
                triangles.push_back(corner);
        }
    if (rings < 2)
        return;
    auto const begin = static_cast<unsigned int>(rings * tubeSides), end = begin + tubeSides;
    for (unsigned int i = 1; i + 1 < tubeSides; ++i) {
        for (unsigned int corner : {begin, begin + i + 1, begin + i})
            triangles.push_back(corner);
        for (unsigned int corner : {end, end + i, end + i + 1})
            triangles.push_back(corner);
    }
}

} // namespace hyxOSG
