// The grid in the ground plane and the axes of the world.
#pragma once

#include "platform/hyx/values/vec2.h"
#include "platform/hyx/values/vec2u.h"

#include <osg/Group>

namespace hyxOSG {

/// Grid and axes under one group; made anew when their measures change while they are shown.
class GridMarkers {
public:
    explicit GridMarkers(osg::Group* root) : m_root(root) {}

    void setCellSize(hyx::Vec2 const& size);

    hyx::Vec2 cellSize() const { return m_cellSize; }

    void setResolution(hyx::Vec2u const& resolution);

    hyx::Vec2u resolution() const { return m_resolution; }

    void showGrid(bool show);

    bool gridShown() const { return m_grid.valid(); }

    void showAxes(bool show);

    bool axesShown() const { return m_axes.valid(); }

private:
    osg::ref_ptr<osg::Group> m_root;
    osg::ref_ptr<osg::Node> m_grid;
    osg::ref_ptr<osg::Node> m_axes;
    hyx::Vec2 m_cellSize{1, 1};
    hyx::Vec2u m_resolution{20, 20};
};

} // namespace hyxOSG
