// Hit points of several scans in one vertex buffer, the oldest first.
#pragma once

#include "platform/hyxOSG/renderers/lidar_output_renderer.h"
#include "platform/hyxSensor/lidar.h"

#include <osg/Geometry>

#include <deque>
#include <vector>

namespace hyxOSG {

class LidarPointCloud {
public:
    LidarPointCloud();
    LidarPointCloud(LidarPointCloud const&) = delete;
    LidarPointCloud& operator=(LidarPointCloud const&) = delete;

    osg::Geometry* node() const { return m_geometry.get(); }

    // Appends the hits whose coordinates are finite, white until recolor().
    void add(std::vector<hyxSensor::LidarHit> const& hits, double time);
    // Drops the points from before `time`; returns whether there were any.
    bool dropBefore(double time);
    void clear();

    // Asks `color` once for each point added since the last time, or for all; an intensity that is not a number counts
    // as 0. Passes on what `color` throws; every point keeps its colour then.
    void recolor(LidarOutputRenderer::IntensityState::ColorFunc const& color, float intensityScale, bool all);

    // Whether any colour lets the background through.
    bool translucent() const { return m_translucent; }

private:
    struct Scan {
        double time;
        std::size_t count;
    };

    void dropFront(std::size_t count);
    void publish();

    osg::ref_ptr<osg::Geometry> m_geometry = new osg::Geometry;
    osg::ref_ptr<osg::Vec3Array> m_positions = new osg::Vec3Array;
    osg::ref_ptr<osg::Vec4ubArray> m_colors = new osg::Vec4ubArray;
    osg::ref_ptr<osg::DrawArrays> m_range = new osg::DrawArrays(GL_POINTS, 0, 0);
    std::vector<float> m_intensities; // unscaled, one per position
    std::size_t m_colored = 0;        // how many points, from the first, have their colour
    bool m_translucent = false;
    std::deque<Scan> m_scans;
};

} // namespace hyxOSG
