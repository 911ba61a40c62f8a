// Adds and drops points without moving those that stay.
#include "reference/hyxOSG/renderers/lidar_point_cloud.h"

#include "reference/hyxOSG/renderers/lidar_colors.h"
#include "reference/machinery/shading/node_state.h"

#include <algorithm>
#include <cmath>

namespace hyxOSG {

LidarPointCloud::LidarPointCloud() {
    m_colors->setNormalize(true);
    m_geometry->setName("lidar hit points");
    m_geometry->setUseDisplayList(false);
    m_geometry->setUseVertexBufferObjects(true);
    m_geometry->setVertexArray(m_positions);
    m_geometry->setColorArray(m_colors, osg::Array::BIND_PER_VERTEX);
    m_geometry->addPrimitiveSet(m_range);
    m_geometry->setDataVariance(osg::Object::DYNAMIC);
    drawWithoutSamples(*m_geometry->getOrCreateStateSet());
}

void LidarPointCloud::add(std::vector<hyxSensor::LidarHit> const& hits, double time) {
    auto const before = m_positions->size();
    m_positions->reserve(before + hits.size());
    m_intensities.reserve(before + hits.size());
    for (auto const& hit : hits) {
        osg::Vec3f const position(hit.position.x, hit.position.y, hit.position.z);
        if (!std::isfinite(position.x()) || !std::isfinite(position.y()) || !std::isfinite(position.z()))
            continue;
        m_positions->push_back(position);
        m_intensities.push_back(hit.intensity);
    }
    m_colors->resize(m_positions->size(), osg::Vec4ub(255, 255, 255, 255));
    m_scans.push_back({time, m_positions->size() - before});
    publish();
}

bool LidarPointCloud::dropBefore(double time) {
    std::size_t count = 0;
    while (!m_scans.empty() && m_scans.front().time < time) {
        count += m_scans.front().count;
        m_scans.pop_front();
    }
    if (count == 0)
        return false;
    dropFront(count);
    publish();
    return true;
}

void LidarPointCloud::clear() {
    m_scans.clear();
    dropFront(m_positions->size());
    publish();
}

void LidarPointCloud::dropFront(std::size_t count) {
    auto const cut = [count](auto& values) {
        values.erase(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(std::min(count, values.size())));
    };
    cut(*m_positions);
    cut(*m_colors);
    cut(m_intensities);
    m_colored -= std::min(count, m_colored);
}

void LidarPointCloud::publish() {
    m_range->setCount(static_cast<GLsizei>(m_positions->size()));
    m_range->dirty();
    m_positions->dirty();
    m_colors->dirty();
    m_geometry->dirtyBound();
}

void LidarPointCloud::recolor(LidarOutputRenderer::IntensityState::ColorFunc const& color, float intensityScale,
                              bool all) {
    auto const first = all ? 0 : m_colored;
    if (first == m_intensities.size())
        return;
    std::vector<osg::Vec4ub> colors;
    colors.reserve(m_intensities.size() - first);
    for (auto i = first; i < m_intensities.size(); ++i) {
        auto const scaled = m_intensities[i] * intensityScale;
        colors.push_back(colorBytes(color(std::isnan(scaled) ? 0.0f : scaled)));
    }
    auto const letsThrough = [](osg::Vec4ub const& each) { return each.a() < 255; };
    m_translucent = (m_translucent && first > 0) || std::any_of(colors.begin(), colors.end(), letsThrough);
    std::copy(colors.begin(), colors.end(), m_colors->begin() + static_cast<std::ptrdiff_t>(first));
    m_colored = m_intensities.size();
    m_colors->dirty();
}

} // namespace hyxOSG
