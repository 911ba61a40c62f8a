#include "platform/hyxOSG/renderers/deformable_height_field_renderer.h"

#include "platform/hyxModel/height_field_deformer.h"
#include "platform/hyxOSG/nodes/geometry_node.h"
#include "platform/hyxOSG/visuals/render_state.h"
#include "reference/hyxOSG/renderers/height_field_tile.h"

#include <osg/observer_ptr>

#include <algorithm>
#include <deque>

namespace hyxOSG {
namespace {

// Small enough that a wheel's track rewrites a fraction of the field, large enough for few draw calls.
constexpr hyx::UInt cells_per_tile = 64;

} // namespace

struct DeformableHeightFieldRenderer::Impl {
    hyx::ref_ptr<hyxModel::HeightFieldDeformer> deformer;
    osg::observer_ptr<osg::Group> root;
    osg::ref_ptr<GeometryNode> node; // null: not valid
    std::deque<HeightFieldTile> tiles;
    hyx::RealVector drawn; // the heights that the tiles show
    bool dirty = false;

    void make_tiles(hyxCollide::HeightField const& field);
    void update(hyxCollide::HeightField const& field);
};

void DeformableHeightFieldRenderer::Impl::make_tiles(hyxCollide::HeightField const& field) {
    auto const lastX = field.getResolutionX() - 1;
    auto const lastY = field.getResolutionY() - 1;
    osg::ref_ptr<osg::Group> const group = new osg::Group;
    for (hyx::UInt y = 0; y < lastY; y += cells_per_tile)
        for (hyx::UInt x = 0; x < lastX; x += cells_per_tile) {
            HeightFieldTile::Span const span{x, std::min(x + cells_per_tile, lastX), y,
                                             std::min(y + cells_per_tile, lastY)};
            group->addChild(tiles.emplace_back(field, span).node());
        }
    drawn = field.getHeights();
    node->setRenderChild(GeometryNode::RENDER_DATA, group);
    node->selectRenderChild(GeometryNode::RENDER_DATA);
}

void DeformableHeightFieldRenderer::Impl::update(hyxCollide::HeightField const& field) {
    for (auto& tile : tiles)
        if (dirty || tile.differs(field, drawn))
            tile.rewrite(field);
    drawn = field.getHeights();
    dirty = false;
}

DeformableHeightFieldRenderer::DeformableHeightFieldRenderer(hyxModel::HeightFieldDeformer* deformer, osg::Group* root)
    : m_impl(std::make_unique<Impl>()) {
    m_impl->deformer = deformer;
    m_impl->root = root;
    if (!deformer || !deformer->getHeightField())
        return;
    m_impl->node = new GeometryNode(deformer->getGeometry());
    m_impl->make_tiles(*deformer->getHeightField());
    if (root)
        root->addChild(m_impl->node);
}

DeformableHeightFieldRenderer::~DeformableHeightFieldRenderer() {
    if (m_impl->root.valid() && m_impl->node)
        m_impl->root->removeChild(m_impl->node);
}

void DeformableHeightFieldRenderer::last(hyx::TimeStamp) {
    if (isValid() && (m_impl->dirty || m_impl->deformer->getHeightField()->getHeights() != m_impl->drawn))
        m_impl->update(*m_impl->deformer->getHeightField());
}

GeometryNode* DeformableHeightFieldRenderer::getHeightFieldNode() const {
    return m_impl->node.get();
}

void DeformableHeightFieldRenderer::forceWireFrameRendering() {
    forceWireFrameModeOn(m_impl->node);
}

void DeformableHeightFieldRenderer::setAsDirty() {
    m_impl->dirty = true;
}

bool DeformableHeightFieldRenderer::isValid() const {
    return m_impl->node.valid();
}

} // namespace hyxOSG
