// Makes grid and axes from the library's own.
#include "reference/hyxOSG/application/grid_markers.h"

#include "platform/hyxOSG/visuals/grid_axes.h"

#include <osg/Geode>
#include <osg/MatrixTransform>

#include <cmath>
#include <stdexcept>

namespace hyxOSG {

void GridMarkers::setCellSize(hyx::Vec2 const& size) {
    if (!(size.x > 0 && size.y > 0 && std::isfinite(size.x) && std::isfinite(size.y)))
        throw std::invalid_argument("the size of a grid cell must be positive and finite");
    m_cellSize = size;
    if (gridShown())
        showGrid(true);
}

void GridMarkers::setResolution(hyx::Vec2u const& resolution) {
    constexpr unsigned long most = 10000;
    if (resolution.x < 1 || resolution.y < 1 || resolution.x > most || resolution.y > most)
        throw std::invalid_argument("the grid must have 1 to 10000 cells along each side");
    m_resolution = resolution;
    if (gridShown())
        showGrid(true);
}

void GridMarkers::showGrid(bool show) {
    if (m_grid)
        m_root->removeChild(m_grid);
    m_grid = nullptr;
    if (!show)
        return;
    hyx::Vec3 const u(m_cellSize.x * m_resolution.x, 0, 0), v(0, m_cellSize.y * m_resolution.y, 0);
    m_grid = createGrid(m_resolution.x, m_resolution.y, (u + v) * -0.5, u, v, m_root.get());
}

void GridMarkers::showAxes(bool show) {
    if (m_axes)
        m_root->removeChild(m_axes);
    m_axes = nullptr;
    if (show)
        m_axes = createAxes(hyx::AffineMatrix4x4(), m_root.get());
}

} // namespace hyxOSG
