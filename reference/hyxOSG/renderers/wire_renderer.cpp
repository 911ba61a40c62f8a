// Draws a wire on the graphics card, reddened by tension.
#include "platform/hyxOSG/renderers/wire_renderer.h"

#include "reference/hyx/values/number_checks.h"
#include "reference/hyxOSG/renderers/spline_display.h"
#include "reference/hyxOSG/renderers/tube_mesh.h"

#include <algorithm>
#include <stdexcept>

namespace hyxOSG {

struct WireRenderer::Implementation {
    hyx::ref_ptr<hyxWire::Wire> wire;
    SplineDisplay display;
    double reference = 0;
    double largestSeen = 0;
    hyx::UInt drawnRevision = 0;
    ShownNode shown;

    Implementation(hyxWire::Wire* wire, osg::Group* parent, hyxUtil::Spline* spline);
    void follow();
    void draw();
};

WireRenderer::Implementation::Implementation(hyxWire::Wire* wire, osg::Group* parent, hyxUtil::Spline* spline)
    : wire(wire),
      display(spline ? spline : new hyxUtil::CubicSpline, parent, std::make_unique<TubeMesh>()),
      // The tube follows its spline; this node only makes the spline follow the wire.
      shown(new osg::Node, parent, "a wire renderer", [this] { follow(); }) {
    display.setRadius(wire->getRadius());
    follow();
}

WireRenderer::WireRenderer(hyxWire::Wire* wire, osg::Group* parent, hyxUtil::Spline* spline) {
    if (!wire)
        throw std::invalid_argument("a wire renderer needs a wire");
    m_implementation = std::make_unique<Implementation>(wire, parent, spline);
}

WireRenderer::~WireRenderer() = default;

void WireRenderer::setReferenceMaxTension(double tension) {
    m_implementation->reference = hyx::requireNonNegative(tension, "the reference tension of a wire");
    m_implementation->draw();
}

double WireRenderer::getReferenceMaxTension() const {
    return m_implementation->reference;
}

void WireRenderer::removeNotification() {
    m_implementation->display.remove();
    m_implementation->shown.remove();
}

void WireRenderer::Implementation::follow() {
    if (drawnRevision == wire->getRevision())
        return;
    drawnRevision = wire->getRevision();
    draw();
}

void WireRenderer::Implementation::draw() {
    std::vector<hyx::Vec3> const& points = wire->getPoints();
    std::vector<hyx::Real> const& tensions = wire->getTensions();
    if (points.size() < 2)
        return;
    largestSeen = std::max(largestSeen, wire->getMaximumTension());
    double const full = reference > 0 ? reference : largestSeen;
    hyx::RealVector values;
    for (std::size_t i = 0; i < points.size(); ++i) {
        hyx::Real const before = tensions[i > 0 ? i - 1 : 0], after = tensions[std::min(i, tensions.size() - 1)];
        values.push_back(full > 0 ? 0.5 * (before + after) / full : 0);
    }
    hyx::Vec3Vector controlPoints;
    controlPoints.assign(points.begin(), points.end());
    display.spline()->setPoints(controlPoints);
    display.draw(values);
}

} // namespace hyxOSG
