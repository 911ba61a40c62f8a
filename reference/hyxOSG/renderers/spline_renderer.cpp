// Draws a spline on the graphics card.
#include "platform/hyxOSG/renderers/spline_renderer.h"

#include "reference/hyxOSG/renderers/shader_tube.h"
#include "reference/hyxOSG/renderers/spline_display.h"

namespace hyxOSG {

struct SplineRenderer::Implementation {
    SplineDisplay display;
};

SplineRenderer::SplineRenderer(hyxUtil::Spline* spline, osg::Group* parent)
    : m_implementation(new Implementation{{spline, parent, std::make_unique<ShaderTube>()}}) {}

SplineRenderer::~SplineRenderer() = default;

void SplineRenderer::update() {
    m_implementation->display.draw();
}

void SplineRenderer::update(hyx::RealVector const& values) {
    m_implementation->display.draw(values);
}

void SplineRenderer::setSplineModel(hyxUtil::Spline* spline) {
    m_implementation->display.setSpline(spline);
}

hyxUtil::Spline* SplineRenderer::getSplineModel() {
    return m_implementation->display.spline();
}

hyxUtil::Spline const* SplineRenderer::getSplineModel() const {
    return m_implementation->display.spline();
}

void SplineRenderer::setRadius(double radius) {
    m_implementation->display.setRadius(radius);
}

double SplineRenderer::getRadius() const {
    return m_implementation->display.radius();
}

void SplineRenderer::setNumSegmentsPerUnitLength(double count) {
    m_implementation->display.setSegmentsPerMetre(count);
}

double SplineRenderer::getNumSegmentsPerUnitLength() const {
    return m_implementation->display.segmentsPerMetre();
}

void SplineRenderer::setColor(hyx::Vec4f const& color) {
    m_implementation->display.setColor(color);
}

hyx::Vec4f SplineRenderer::getColor() const {
    return m_implementation->display.color();
}

void SplineRenderer::removeNotification() {
    m_implementation->display.remove();
}

} // namespace hyxOSG
