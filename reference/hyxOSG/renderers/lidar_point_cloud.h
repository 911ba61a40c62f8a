// Hit points of several scans in one vertex buffer, the oldest first.
#pragma once

#include "platform/hyxSensor/lidar.h"
#include "reference/hyxOSG/renderers/lidar_color_table.h"

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

    // Colours the points added since the last time, or all when the table had to be sampled anew or `all` is set.
    // Passes on what the table's function throws; every point keeps its colour then.
    void recolor(LidarColorTable& table, float intensityScale, bool all);

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
    std::deque<Scan> m_scans;
};

} // namespace hyxOSG
