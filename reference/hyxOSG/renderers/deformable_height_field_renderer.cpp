// Redraws the tiles of a height field that have changed.
#include "platform/hyxOSG/renderers/deformable_height_field_renderer.h"

#include "platform/hyxModel/height_field_deformer.h"
#include "platform/hyxOSG/nodes/geometry_node.h"
#include "platform/hyxOSG/visuals/render_state.h"
#include "platform/osg/attachment.h"
#include "reference/hyxOSG/renderers/height_field_tile.h"

#include <osg/observer_ptr>

#include <algorithm>
#include <deque>

namespace hyxOSG {
namespace {

// Small enough that a wheel's track rewrites a fraction of the field, large enough for few draw calls.
constexpr hyx::UInt cellsPerTile = 64;

} // namespace

struct DeformableHeightFieldRenderer::Implementation {
    hyx::ref_ptr<hyxModel::HeightFieldDeformer> deformer;
    osg::observer_ptr<osg::Group> root;
    osg::ref_ptr<GeometryNode> node; // null: not valid
    std::deque<HeightFieldTile> tiles;
    hyx::RealVector drawn; // the heights that the tiles show
    bool dirty = false;

    void makeTiles(hyxCollide::HeightField const& field);
    void update(hyxCollide::HeightField const& field);
};

void DeformableHeightFieldRenderer::Implementation::makeTiles(hyxCollide::HeightField const& field) {
    auto const lastX = field.getResolutionX() - 1;
    auto const lastY = field.getResolutionY() - 1;
    osg::ref_ptr<osg::Group> const group = new osg::Group;
    for (hyx::UInt y = 0; y < lastY; y += cellsPerTile)
        for (hyx::UInt x = 0; x < lastX; x += cellsPerTile) {
            HeightFieldTile::Span const span{x, std::min(x + cellsPerTile, lastX), y,
                                             std::min(y + cellsPerTile, lastY)};
            group->addChild(tiles.emplace_back(field, span).node());
        }
    drawn = field.getHeights();
    node->setRenderChild(GeometryNode::RENDER_DATA, group);
    node->selectRenderChild(GeometryNode::RENDER_DATA);
}

void DeformableHeightFieldRenderer::Implementation::update(hyxCollide::HeightField const& field) {
    for (auto& tile : tiles)
        if (dirty || tile.differs(field, drawn))
            tile.rewrite(field);
    drawn = field.getHeights();
    dirty = false;
}

DeformableHeightFieldRenderer::DeformableHeightFieldRenderer(hyxModel::HeightFieldDeformer* deformer, osg::Group* root)
    : m_implementation(std::make_unique<Implementation>()) {
    m_implementation->deformer = deformer;
    m_implementation->root = root;
    if (!deformer || !deformer->getHeightField())
        return;
    m_implementation->node = new GeometryNode(deformer->getGeometry());
    m_implementation->makeTiles(*deformer->getHeightField());
    if (root)
        osg::attach(*root, *m_implementation->node);
}

DeformableHeightFieldRenderer::~DeformableHeightFieldRenderer() {
    if (m_implementation->root.valid() && m_implementation->node)
        m_implementation->root->removeChild(m_implementation->node);
}

void DeformableHeightFieldRenderer::last(hyx::TimeStamp) {
    if (isValid() && (m_implementation->dirty ||
                      m_implementation->deformer->getHeightField()->getHeights() != m_implementation->drawn))
        m_implementation->update(*m_implementation->deformer->getHeightField());
}

GeometryNode* DeformableHeightFieldRenderer::getHeightFieldNode() const {
    return m_implementation->node.get();
}

void DeformableHeightFieldRenderer::forceWireFrameRendering() {
    forceWireFrameModeOn(m_implementation->node);
}

void DeformableHeightFieldRenderer::setAsDirty() {
    m_implementation->dirty = true;
}

bool DeformableHeightFieldRenderer::isValid() const {
    return m_implementation->node.valid();
}

} // namespace hyxOSG
