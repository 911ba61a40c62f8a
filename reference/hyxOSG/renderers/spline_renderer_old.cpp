#include "platform/hyxOSG/renderers/spline_renderer_old.h"

#include "reference/hyxOSG/renderers/spline_display.h"
#include "reference/hyxOSG/renderers/tube_mesh.h"

namespace hyxOSG {

struct SplineRendererOld::Impl {
    SplineDisplay display;
};

SplineRendererOld::SplineRendererOld(hyxUtil::Spline* spline, osg::Group* parent)
    : m_impl(new Impl{{spline, parent, std::make_unique<TubeMesh>()}}) {}

SplineRendererOld::~SplineRendererOld() = default;

void SplineRendererOld::update() {
    m_impl->display.draw();
}

void SplineRendererOld::update(hyx::RealVector const& values) {
    m_impl->display.draw(values);
}

void SplineRendererOld::setSplineModel(hyxUtil::Spline* spline) {
    m_impl->display.setSpline(spline);
}

hyxUtil::Spline* SplineRendererOld::getSplineModel() {
    return m_impl->display.spline();
}

hyxUtil::Spline const* SplineRendererOld::getSplineModel() const {
    return m_impl->display.spline();
}

void SplineRendererOld::setRadius(double radius) {
    m_impl->display.setRadius(radius);
}

double SplineRendererOld::getRadius() const {
    return m_impl->display.radius();
}

void SplineRendererOld::setNumSegmentsPerUnitLength(double count) {
    m_impl->display.setSegmentsPerMetre(count);
}

double SplineRendererOld::getNumSegmentsPerUnitLength() const {
    return m_impl->display.segmentsPerMetre();
}

void SplineRendererOld::setColor(hyx::Vec4f const& color) {
    m_impl->display.setColor(color);
}

hyx::Vec4f SplineRendererOld::getColor() const {
    return m_impl->display.color();
}

void SplineRendererOld::removeNotification() {
    m_impl->display.remove();
}

} // namespace hyxOSG
