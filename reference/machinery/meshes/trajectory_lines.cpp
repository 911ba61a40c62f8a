// Keeps the newest points of many lines.
#include "reference/machinery/meshes/trajectory_lines.h"

#include "reference/machinery/meshes/line_meshes.h"
#include "reference/machinery/meshes/mesh_builder.h"
#include "reference/machinery/shading/vertex_colors.h"

#include <osg/LineWidth>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace hyxOSG {

void prepareForLines(osg::Geometry& geometry) {
    geometry.setDataVariance(osg::Object::DYNAMIC);
    geometry.setVertexArray(new osg::Vec3Array);
    geometry.setColorArray(new osg::Vec4Array, osg::Array::BIND_PER_VERTEX);
    useVertexBuffers(geometry);
    osg::StateSet& state = *geometry.getOrCreateStateSet();
    state.setAttributeAndModes(new osg::LineWidth(2));
    makeUnlit(state);
}

osg::Vec4 distinctColor(std::size_t index) {
    double const hue =
        6 * std::fmod(0.618033988749895 * static_cast<double>(index), 1.0); // golden steps never come near
    auto const channel = [hue](double shift) {
        double const place = std::fmod(hue + shift, 6.0);
        return static_cast<float>(std::clamp(2 - std::abs(place - 3), 0.0, 1.0));
    };
    return {channel(3), channel(1), channel(5), 1};
}

TrajectoryLines::TrajectoryLines(std::size_t capacity) : m_capacity(capacity) {
    if (capacity < 2)
        throw std::invalid_argument("a trajectory needs room for at least 2 points");
}

void TrajectoryLines::add(Key key, osg::Vec3 const& point, osg::Vec4 const& color) {
    std::deque<Point>& way = m_ways[key];
    if (way.size() == m_capacity)
        way.pop_front();
    way.push_back({point, color});
}

void TrajectoryLines::keepOnly(std::set<Key> const& keys) {
    std::erase_if(m_ways, [&keys](auto const& way) { return !keys.contains(way.first); });
}

std::size_t TrajectoryLines::numPoints() const {
    std::size_t count = 0;
    for (auto const& [key, way] : m_ways)
        count += way.size();
    return count;
}

void TrajectoryLines::writeTo(osg::Geometry& geometry) const {
    auto& positions = static_cast<osg::Vec3Array&>(*geometry.getVertexArray());
    auto& colors = static_cast<osg::Vec4Array&>(*geometry.getColorArray());
    positions.clear();
    colors.clear();
    geometry.removePrimitiveSet(0, geometry.getNumPrimitiveSets());
    for (auto const& [key, way] : m_ways) {
        geometry.addPrimitiveSet(
            new osg::DrawArrays(GL_LINE_STRIP, static_cast<GLint>(positions.size()), static_cast<GLsizei>(way.size())));
        for (Point const& point : way) {
            positions.push_back(point.position);
            colors.push_back(point.color);
        }
    }
    positions.dirty();
    colors.dirty();
    followOpacity(geometry, colors);
    geometry.dirtyBound();
}

} // namespace hyxOSG
