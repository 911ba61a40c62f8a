// Colours the segments of a cable by their wear, now or summed up.
#include "platform/hyxOSG/renderers/cable_damage_renderer.h"

#include "platform/hyxOSG/nodes/geometry_node.h"
#include "platform/hyxOSG/renderers/scalar_color_map.h"
#include "reference/hyx/values/number_checks.h"
#include "reference/hyxOSG/renderers/frame_update.h"
#include "reference/hyxOSG/renderers/told_scale.h"
#include "reference/machinery/meshes/conversions.h"
#include "reference/machinery/meshes/shape_meshes.h"
#include "reference/machinery/shading/material_colors.h"

#include <osg/Material>

#include <algorithm>
#include <stdexcept>
#include <vector>

namespace hyxOSG {

namespace {

constexpr unsigned int cylinderSides = 12;

} // namespace

struct CableDamageRenderer::Implementation {
    hyx::ref_ptr<hyxCable::CableDamage> damage;
    double radius;
    double rangeMax = 0;
    bool accumulated = false;
    osg::ref_ptr<osg::Group> group = new osg::Group;
    std::vector<osg::ref_ptr<GeometryNode>> segments;
    std::vector<osg::ref_ptr<osg::Material>> materials;
    hyx::UInt drawnCable = 0;
    hyx::UInt drawnDamage = 0;
    ToldScale scale;
    ShownNode shown;

    Implementation(hyxCable::CableDamage* damage, double radius, osg::Group* parent)
        : damage(damage), radius(radius), shown(group, parent, "a cable damage renderer", [this] { follow(); }) {
        group->setName("cable damage");
    }

    void follow();
    void makeSegments(std::size_t count);
    void place();
    void color();
    DrawnScale drawnScale() const;

    double damageOf(std::size_t segment) const {
        return accumulated ? damage->getAccumulatedDamage(segment) : damage->getCurrentDamage(segment);
    }
};

CableDamageRenderer::CableDamageRenderer(hyxCable::CableDamage* damage, double radius, osg::Group* parent) {
    if (!damage)
        throw std::invalid_argument("a cable damage renderer needs the damage of a cable");
    m_implementation =
        std::make_unique<Implementation>(damage, hyx::requirePositive(radius, "the radius of a drawn cable"), parent);
    m_implementation->follow();
}

CableDamageRenderer::~CableDamageRenderer() = default;

void CableDamageRenderer::renderCurrent() {
    m_implementation->accumulated = false;
    m_implementation->color();
}

void CableDamageRenderer::renderAccumulated() {
    m_implementation->accumulated = true;
    m_implementation->color();
}

bool CableDamageRenderer::isRenderingCurrent() const {
    return !m_implementation->accumulated;
}

bool CableDamageRenderer::isRenderingAccumulated() const {
    return m_implementation->accumulated;
}

void CableDamageRenderer::setEnableRendering(bool enable) {
    m_implementation->group->setNodeMask(enable ? ~0u : 0u);
}

bool CableDamageRenderer::getEnableRendering() const {
    return m_implementation->group->getNodeMask() != 0;
}

void CableDamageRenderer::setColorRangeMax(double damage) {
    m_implementation->rangeMax = hyx::requireNonNegative(damage, "the maximum of a damage colour range");
    m_implementation->color();
}

double CableDamageRenderer::getColorRangeMax() const {
    return m_implementation->rangeMax;
}

hyx::ref_ptr<ScalarColorMap> CableDamageRenderer::getColorScale() const {
    m_implementation->follow();
    return m_implementation->scale.tell(m_implementation->drawnScale());
}

GeometryNode* CableDamageRenderer::getOsgNode(std::size_t segment) {
    return segment < m_implementation->segments.size() ? m_implementation->segments[segment].get() : nullptr;
}

void CableDamageRenderer::last(double) {
    m_implementation->follow();
}

void CableDamageRenderer::removeNotification() {
    m_implementation->shown.remove();
}

void CableDamageRenderer::Implementation::follow() {
    hyxCable::Cable const& cable = *damage->getCable();
    if (segments.size() != cable.getNumSegments())
        makeSegments(cable.getNumSegments());
    if (drawnCable != cable.getRevision())
        place();
    if (drawnDamage != damage->getRevision() || drawnCable != cable.getRevision())
        color();
    drawnCable = cable.getRevision();
    drawnDamage = damage->getRevision();
}

void CableDamageRenderer::Implementation::makeSegments(std::size_t count) {
    group->removeChildren(0, group->getNumChildren());
    segments.clear();
    materials.clear();
    osg::ref_ptr<osg::Geometry> const cylinder = unitConeMesh(cylinderSides, 1);
    for (std::size_t i = 0; i < count; ++i) {
        osg::ref_ptr<GeometryNode> const node = new GeometryNode;
        node->setRenderChild(GeometryNode::GEOMETRY_DATA, cylinder);
        osg::ref_ptr<osg::Material> const material = new osg::Material;
        osg::StateSet* const state = node->getOrCreateStateSet();
        state->setAttributeAndModes(material);
        state->setMode(GL_NORMALIZE, osg::StateAttribute::ON);
        state->setDataVariance(osg::Object::DYNAMIC);
        segments.push_back(node);
        materials.push_back(material);
        group->addChild(node);
    }
}

// The mesh has radius 1 and reaches from -1 to 1 along Y.
void CableDamageRenderer::Implementation::place() {
    std::vector<hyx::Vec3> const& points = damage->getCable()->getPoints();
    for (std::size_t i = 0; i < segments.size(); ++i) {
        osg::Vec3d const from = toOsg(points[i]), to = toOsg(points[i + 1]);
        osg::Quat turn;
        turn.makeRotate(osg::Vec3d(0, 1, 0), to - from);
        segments[i]->setMatrix(osg::Matrixd::scale(radius, 0.5 * (to - from).length(), radius) *
                               osg::Matrixd::rotate(turn) * osg::Matrixd::translate((from + to) * 0.5));
    }
}

void CableDamageRenderer::Implementation::color() {
    hyx::ref_ptr<ScalarColorMap> const map = newColorMap(drawnScale());
    for (std::size_t i = 0; i < segments.size(); ++i)
        setDiffuse(*materials[i], map->getColorOSG(damageOf(i), true));
}

DrawnScale CableDamageRenderer::Implementation::drawnScale() const {
    double most = rangeMax;
    for (std::size_t i = 0; rangeMax == 0 && i < segments.size(); ++i)
        most = std::max(most, damageOf(i));
    return {{{0, 0, 1, 1}, {0, 1, 0, 1}, {1, 0, 0, 1}}, 0, most > 0 ? most : 1};
}

} // namespace hyxOSG
