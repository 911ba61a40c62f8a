#include "platform/hyxOSG/renderers/spline_renderer.h"

#include "reference/hyxOSG/renderers/shader_tube.h"
#include "reference/hyxOSG/renderers/spline_display.h"

namespace hyxOSG {

struct SplineRenderer::Impl {
    SplineDisplay display;
};

SplineRenderer::SplineRenderer(hyxUtil::Spline* spline, osg::Group* parent)
    : m_impl(new Impl{{spline, parent, std::make_unique<ShaderTube>()}}) {}

SplineRenderer::~SplineRenderer() = default;

void SplineRenderer::update() {
    m_impl->display.draw();
}

void SplineRenderer::update(hyx::RealVector const& values) {
    m_impl->display.draw(values);
}

void SplineRenderer::setSplineModel(hyxUtil::Spline* spline) {
    m_impl->display.setSpline(spline);
}

hyxUtil::Spline* SplineRenderer::getSplineModel() {
    return m_impl->display.spline();
}

hyxUtil::Spline const* SplineRenderer::getSplineModel() const {
    return m_impl->display.spline();
}

void SplineRenderer::setRadius(double radius) {
    m_impl->display.setRadius(radius);
}

double SplineRenderer::getRadius() const {
    return m_impl->display.radius();
}

void SplineRenderer::setNumSegmentsPerUnitLength(double count) {
    m_impl->display.setSegmentsPerMetre(count);
}

double SplineRenderer::getNumSegmentsPerUnitLength() const {
    return m_impl->display.segmentsPerMetre();
}

void SplineRenderer::setColor(hyx::Vec4f const& color) {
    m_impl->display.setColor(color);
}

hyx::Vec4f SplineRenderer::getColor() const {
    return m_impl->display.color();
}

void SplineRenderer::removeNotification() {
    m_impl->display.remove();
}

} // namespace hyxOSG
