// Gathers triangles of a round, and shows them at its end.
#include "platform/hyxOSG/renderers/pressure_field_renderer.h"

#include "platform/osg/attachment.h"
#include "reference/hyxOSG/renderers/color_presets.h"
#include "reference/hyxOSG/renderers/told_scale.h"
#include "reference/machinery/shading/node_state.h"
#include "reference/machinery/shading/shading_marks.h"

#include <osg/Geometry>
#include <osg/MatrixTransform>
#include <osg/PolygonOffset>
#include <osg/Program>
#include <osg/observer_ptr>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace hyxOSG {
namespace {

constexpr int coolwarm = 1;

bool drawable(hyxModel::TriangleData const& triangle, hyx::AffineMatrix4x4 const& transform) {
    for (int corner = 0; corner < 3; ++corner) {
        auto const point = transform.transformPoint(triangle.vertices[corner]);
        if (!std::isfinite(point.x) || !std::isfinite(point.y) || !std::isfinite(point.z) ||
            !std::isfinite(triangle.pressures[corner]))
            return false;
    }
    return true;
}

} // namespace

struct PressureFieldRenderer::Implementation {
    osg::observer_ptr<osg::Group> root;
    double maxPressure = 0; // 0: that of the round
    double shownLimit = 0;  // of the last colour
    ToldScale scale;
    osg::ref_ptr<osg::MatrixTransform> node = new osg::MatrixTransform;
    osg::ref_ptr<osg::Geometry> geometry = new osg::Geometry;
    osg::ref_ptr<osg::Vec3Array> positions = new osg::Vec3Array;
    osg::ref_ptr<osg::Vec4Array> colors = new osg::Vec4Array;
    osg::ref_ptr<osg::DrawArrays> range = new osg::DrawArrays(GL_TRIANGLES, 0, 0);
    // The round that is being collected.
    std::vector<osg::Vec3> corners;
    std::vector<double> pressures;

    void setUp();
    void show();
};

void PressureFieldRenderer::Implementation::setUp() {
    geometry->setName("pressure field");
    geometry->setUseDisplayList(false);
    geometry->setUseVertexBufferObjects(true);
    geometry->setDataVariance(osg::Object::DYNAMIC);
    geometry->setVertexArray(positions);
    geometry->setColorArray(colors, osg::Array::BIND_PER_VERTEX);
    geometry->addPrimitiveSet(range);
    node->addChild(geometry);
    node->setNodeMask(~decorator::shadowMasks);
    auto* const state = geometry->getOrCreateStateSet();
    // The colours are read as values: no light, shadow or texture may change them.
    state->setAttributeAndModes(new osg::Program, keptOn);
    state->setMode(GL_LIGHTING, keptOff);
    state->setTextureMode(0, GL_TEXTURE_2D, keptOff);
    // The field lies on the surface it belongs to.
    state->setAttributeAndModes(new osg::PolygonOffset(-1, -1), keptOn);
}

void PressureFieldRenderer::Implementation::show() {
    auto const highest = pressures.empty() ? 0.0 : *std::max_element(pressures.begin(), pressures.end());
    auto const limit = maxPressure > 0 ? maxPressure : std::max(highest, 0.0);
    shownLimit = limit;
    auto const& table = presetColors(coolwarm);
    positions->assign(corners.begin(), corners.end());
    colors->clear();
    for (auto const pressure : pressures) {
        auto const share = limit > 0 ? std::clamp(pressure / limit, 0.0, 1.0) : 0.0;
        colors->push_back(table[static_cast<std::size_t>(std::lround(share * static_cast<double>(table.size() - 1)))]);
    }
    range->setCount(static_cast<GLsizei>(positions->size()));
    range->dirty();
    positions->dirty();
    colors->dirty();
    geometry->dirtyBound();
}

PressureFieldRenderer::PressureFieldRenderer(osg::Group* root, hyx::Real maxPressure)
    : m_implementation(std::make_unique<Implementation>()) {
    if (!(maxPressure >= 0) || !std::isfinite(maxPressure))
        throw std::invalid_argument("the highest pressure must be 0 (automatic) or more pascal");
    m_implementation->root = root;
    m_implementation->maxPressure = maxPressure;
    m_implementation->shownLimit = maxPressure;
    m_implementation->setUp();
    if (root)
        osg::attach(*root, *m_implementation->node);
}

PressureFieldRenderer::~PressureFieldRenderer() {
    if (m_implementation->root.valid())
        m_implementation->root->removeChild(m_implementation->node);
}

void PressureFieldRenderer::addTriangle(hyxModel::TriangleData const& triangle, hyx::AffineMatrix4x4 const& transform) {
    if (!drawable(triangle, transform))
        return;
    for (int corner = 0; corner < 3; ++corner) {
        auto const point = transform.transformPoint(triangle.vertices[corner]);
        m_implementation->corners.emplace_back(osg::Vec3d(point.x, point.y, point.z));
        m_implementation->pressures.push_back(triangle.pressures[corner]);
    }
}

void PressureFieldRenderer::clear() {
    m_implementation->corners.clear();
    m_implementation->pressures.clear();
}

void PressureFieldRenderer::done() {
    m_implementation->show();
}

void PressureFieldRenderer::updateTransform(hyx::AffineMatrix4x4 const& transform) {
    m_implementation->node->setMatrix(osg::Matrixd(transform.ptr()));
}

hyx::ref_ptr<ScalarColorMap> PressureFieldRenderer::getColorScale() const {
    return m_implementation->scale.tell({presetColors(coolwarm), 0, m_implementation->shownLimit});
}

} // namespace hyxOSG
