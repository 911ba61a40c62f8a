// Compares and rewrites a part of a height field.
#include "reference/hyxOSG/renderers/height_field_tile.h"

#include <algorithm>

namespace hyxOSG {
namespace {

hyx::UInt before(hyx::UInt knot) {
    return knot == 0 ? 0 : knot - 1;
}

hyx::UInt after(hyx::UInt knot, hyx::UInt resolution) {
    return std::min(knot + 1, resolution - 1);
}

// From the slopes between the neighbouring knots; one-sided at the edge of the field.
osg::Vec3 normalAt(hyxCollide::HeightField const& field, hyx::UInt x, hyx::UInt y) {
    auto const left = field.getVertex(before(x), y);
    auto const right = field.getVertex(after(x, field.getResolutionX()), y);
    auto const front = field.getVertex(x, before(y));
    auto const back = field.getVertex(x, after(y, field.getResolutionY()));
    auto const normal = (right - left).cross(back - front);
    osg::Vec3 scene(osg::Vec3d(normal.x, normal.y, normal.z));
    scene.normalize();
    return scene;
}

} // namespace

HeightFieldTile::HeightFieldTile(hyxCollide::HeightField const& field, Span span) : m_span(span) {
    makeTriangles();
    rewrite(field);
    m_surface.publish(true);
}

void HeightFieldTile::makeTriangles() {
    auto const width = static_cast<unsigned>(m_span.lastX - m_span.firstX + 1);
    auto const height = static_cast<unsigned>(m_span.lastY - m_span.firstY + 1);
    for (unsigned y = 0; y + 1 < height; ++y)
        for (unsigned x = 0; x + 1 < width; ++x) {
            auto const corner = y * width + x;
            for (auto const index :
                 {corner, corner + 1, corner + width, corner + 1, corner + width + 1, corner + width})
                m_surface.triangles().push_back(index);
        }
}

bool HeightFieldTile::differs(hyxCollide::HeightField const& field, hyx::RealVector const& drawn) const {
    auto const& heights = field.getHeights();
    auto const first = static_cast<std::ptrdiff_t>(before(m_span.firstX));
    auto const end = static_cast<std::ptrdiff_t>(after(m_span.lastX, field.getResolutionX())) + 1;
    for (auto y = before(m_span.firstY); y <= after(m_span.lastY, field.getResolutionY()); ++y) {
        auto const row = static_cast<std::ptrdiff_t>(y * field.getResolutionX());
        if (!std::equal(heights.begin() + row + first, heights.begin() + row + end, drawn.begin() + row + first))
            return true;
    }
    return false;
}

void HeightFieldTile::rewrite(hyxCollide::HeightField const& field) {
    auto& positions = m_surface.positions();
    auto& normals = m_surface.normals();
    positions.clear();
    normals.clear();
    for (auto y = m_span.firstY; y <= m_span.lastY; ++y)
        for (auto x = m_span.firstX; x <= m_span.lastX; ++x) {
            auto const vertex = field.getVertex(x, y);
            positions.push_back(osg::Vec3d(vertex.x, vertex.y, vertex.z));
            normals.push_back(normalAt(field, x, y));
        }
    m_surface.publish(false);
}

} // namespace hyxOSG
