// Draws a spline anew when it or its look has changed.
#include "reference/hyxOSG/renderers/spline_display.h"

#include "reference/hyx/values/number_checks.h"
#include "reference/machinery/meshes/conversions.h"

#include <stdexcept>

namespace hyxOSG {

SplineDisplay::SplineDisplay(hyxUtil::Spline* spline, osg::Group* parent, std::unique_ptr<TubeDrawing> drawing)
    : m_spline(spline),
      m_drawing(std::move(drawing)),
      m_shown(m_drawing->node(), parent, "a spline renderer", [this] { follow(); }) {
    draw();
}

void SplineDisplay::draw() {
    std::vector<TubeStation> stations;
    if (m_spline && !m_shown.isRemoved()) {
        if (m_values.size() != m_spline->getNumPoints())
            m_values.clear();
        stations = sampleTube(*m_spline, m_perMetre, m_values);
        m_drawnRevision = m_spline->getRevision();
    }
    m_drawing->show(stations, m_radius, toOsg(m_color));
}

void SplineDisplay::draw(hyx::RealVector const& values) {
    if (values.size() != (m_spline ? m_spline->getNumPoints() : 0))
        throw std::invalid_argument("a spline needs one value for each of its control points");
    m_values = values;
    draw();
}

void SplineDisplay::follow() {
    if (m_spline && m_spline->getRevision() != m_drawnRevision)
        draw();
}

void SplineDisplay::setSpline(hyxUtil::Spline* spline) {
    m_spline = spline;
    m_values.clear();
    draw();
}

void SplineDisplay::setRadius(double radius) {
    m_radius = hyx::requirePositive(radius, "the radius of a spline");
    draw();
}

void SplineDisplay::setSegmentsPerMetre(double count) {
    m_perMetre = hyx::requirePositive(count, "the number of segments per unit length of a spline");
    draw();
}

void SplineDisplay::setColor(hyx::Vec4f const& color) {
    m_color = requireColor(color);
    draw();
}

} // namespace hyxOSG
