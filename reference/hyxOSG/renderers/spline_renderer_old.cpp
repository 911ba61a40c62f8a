// Draws a spline in plain triangles.
#include "platform/hyxOSG/renderers/spline_renderer_old.h"

#include "reference/hyxOSG/renderers/spline_display.h"
#include "reference/hyxOSG/renderers/tube_mesh.h"

namespace hyxOSG {

struct SplineRendererOld::Implementation {
    SplineDisplay display;
};

SplineRendererOld::SplineRendererOld(hyxUtil::Spline* spline, osg::Group* parent)
    : m_implementation(new Implementation{{spline, parent, std::make_unique<TubeMesh>()}}) {}

SplineRendererOld::~SplineRendererOld() = default;

void SplineRendererOld::update() {
    m_implementation->display.draw();
}

void SplineRendererOld::update(hyx::RealVector const& values) {
    m_implementation->display.draw(values);
}

void SplineRendererOld::setSplineModel(hyxUtil::Spline* spline) {
    m_implementation->display.setSpline(spline);
}

hyxUtil::Spline* SplineRendererOld::getSplineModel() {
    return m_implementation->display.spline();
}

hyxUtil::Spline const* SplineRendererOld::getSplineModel() const {
    return m_implementation->display.spline();
}

void SplineRendererOld::setRadius(double radius) {
    m_implementation->display.setRadius(radius);
}

double SplineRendererOld::getRadius() const {
    return m_implementation->display.radius();
}

void SplineRendererOld::setNumSegmentsPerUnitLength(double count) {
    m_implementation->display.setSegmentsPerMetre(count);
}

double SplineRendererOld::getNumSegmentsPerUnitLength() const {
    return m_implementation->display.segmentsPerMetre();
}

void SplineRendererOld::setColor(hyx::Vec4f const& color) {
    m_implementation->display.setColor(color);
}

hyx::Vec4f SplineRendererOld::getColor() const {
    return m_implementation->display.color();
}

void SplineRendererOld::removeNotification() {
    m_implementation->display.remove();
}

} // namespace hyxOSG
