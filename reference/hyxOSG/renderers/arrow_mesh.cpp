// Turns the outline of an arrow about its axis, for any number of arrows.
#include "reference/hyxOSG/renderers/arrow_mesh.h"

#include "reference/machinery/shading/vertex_colors.h"

#include <osg/CullFace>

#include <cmath>
#include <numbers>

namespace hyxOSG {
namespace {

constexpr unsigned shaftSides = 16;

// The outline of an arrow, tail to tip, that is turned about its axis. Neighbours make one band with one slope.
struct Ring {
    double along;
    double radius;
};

osg::Vec3d anyNormal(osg::Vec3d const& axis) {
    auto normal = axis ^ (std::abs(axis.z()) < 0.9 ? osg::Vec3d(0, 0, 1) : osg::Vec3d(1, 0, 0));
    normal.normalize();
    return normal;
}

bool drawable(osg::Vec3d const& tail, osg::Vec3d const& span) {
    return tail.valid() && std::isfinite(tail.length()) && std::isfinite(span.length()) && span.length() > 1e-9;
}

} // namespace

ArrowMesh::ArrowMesh() {
    m_geometry->setName("arrows");
    m_geometry->setUseDisplayList(false);
    m_geometry->setUseVertexBufferObjects(true);
    m_geometry->setDataVariance(osg::Object::DYNAMIC);
    m_geometry->setVertexArray(m_positions);
    m_geometry->setNormalArray(m_normals, osg::Array::BIND_PER_VERTEX);
    useVertexColors(*m_geometry, m_colors.get());
    m_geometry->addPrimitiveSet(m_triangles);
    m_geometry->getOrCreateStateSet()->setAttributeAndModes(new osg::CullFace);
}

void ArrowMesh::begin() {
    m_positions->clear();
    m_normals->clear();
    m_colors->clear();
    m_triangles->clear();
}

void ArrowMesh::addVertex(osg::Vec3d const& position, osg::Vec3d const& normal, osg::Vec4f const& color) {
    m_positions->push_back(position);
    m_normals->push_back(normal);
    m_colors->push_back(color);
}

void ArrowMesh::add(osg::Vec3d const& tail, osg::Vec3d const& span, osg::Vec4f const& color, Style const& style) {
    if (!drawable(tail, span))
        return;
    auto const length = span.length();
    auto const axis = span / length;
    auto const right = anyNormal(axis);
    auto const up = axis ^ right;
    auto const tip = std::min<double>(style.coneHeight, length);
    auto const radius = style.coneHeight > 0 ? style.radius * tip / style.coneHeight : style.radius;
    Ring const outline[] = {{0, 0}, {0, radius}, {length - tip, radius}, {length - tip, 2 * radius}, {length, 0}};

    for (std::size_t band = 0; band + 1 < std::size(outline); ++band) {
        auto const from = outline[band];
        auto const to = outline[band + 1];
        auto const first = static_cast<unsigned>(m_positions->size());
        // Perpendicular to the band's slope, away from the axis (or back along it where the band is flat).
        osg::Vec2d slope(to.along - from.along, from.radius - to.radius);
        if (slope.normalize() == 0)
            continue;
        for (unsigned side = 0; side <= shaftSides; ++side) {
            auto const angle = 2 * std::numbers::pi * side / shaftSides;
            auto const outward = right * std::cos(angle) + up * std::sin(angle);
            auto const normal = outward * slope.x() + axis * slope.y();
            addVertex(tail + axis * from.along + outward * from.radius, normal, color);
            addVertex(tail + axis * to.along + outward * to.radius, normal, color);
        }
        for (unsigned side = 0; side < shaftSides; ++side) {
            auto const corner = first + 2 * side;
            for (auto const index : {corner, corner + 2, corner + 1, corner + 1, corner + 2, corner + 3})
                m_triangles->push_back(index);
        }
    }
}

void ArrowMesh::end() {
    m_positions->dirty();
    m_normals->dirty();
    m_colors->dirty();
    followOpacity(*m_geometry, *m_colors);
    m_triangles->dirty();
    m_geometry->dirtyBound();
}

} // namespace hyxOSG
