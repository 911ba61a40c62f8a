// Draws a wire as a line strip through its points.
#include "platform/hyxOSG/renderers/wire_renderer_old.h"

#include "reference/hyxOSG/renderers/frame_update.h"
#include "reference/machinery/meshes/conversions.h"
#include "reference/machinery/shading/vertex_colors.h"

#include <osg/Geometry>
#include <osg/LineWidth>

#include <stdexcept>

namespace hyxOSG {

struct WireRendererOld::Implementation {
    hyx::ref_ptr<hyxWire::Wire> wire;
    osg::ref_ptr<osg::Geometry> geometry = new osg::Geometry;
    osg::ref_ptr<osg::Vec3Array> positions = new osg::Vec3Array;
    osg::ref_ptr<osg::DrawArrays> strip = new osg::DrawArrays(GL_LINE_STRIP, 0, 0);
    hyx::UInt drawnRevision = 0;
    ShownNode shown;

    Implementation(hyxWire::Wire* wire, osg::Group* parent)
        : wire(wire), shown(geometry, parent, "a wire renderer", [this] { follow(); }) {}

    void setUp();
    void follow();
};

WireRendererOld::WireRendererOld(hyxWire::Wire* wire, osg::Group* parent) {
    if (!wire)
        throw std::invalid_argument("a wire renderer needs a wire");
    m_implementation = std::make_unique<Implementation>(wire, parent);
    m_implementation->setUp();
    m_implementation->follow();
}

WireRendererOld::~WireRendererOld() = default;

void WireRendererOld::removeNotification() {
    m_implementation->shown.remove();
}

void WireRendererOld::Implementation::setUp() {
    geometry->setName("wire");
    geometry->setUseDisplayList(false);
    geometry->setUseVertexBufferObjects(true);
    geometry->setDataVariance(osg::Object::DYNAMIC);
    geometry->setVertexArray(positions);
    osg::ref_ptr<osg::Vec4Array> const color = new osg::Vec4Array(1);
    (*color)[0] = osg::Vec4(0.9f, 0.8f, 0.2f, 1);
    geometry->setColorArray(color, osg::Array::BIND_OVERALL);
    geometry->addPrimitiveSet(strip);
    geometry->getOrCreateStateSet()->setAttributeAndModes(new osg::LineWidth(2));
    useNoLight(*geometry);
}

void WireRendererOld::Implementation::follow() {
    if (drawnRevision == wire->getRevision())
        return;
    drawnRevision = wire->getRevision();
    positions->clear();
    for (hyx::Vec3 const& point : wire->getPoints())
        positions->push_back(toOsg(point));
    strip->setCount(static_cast<int>(positions->size()));
    positions->dirty();
    geometry->dirtyBound();
}

} // namespace hyxOSG
