// Follows a geometry, and can be found by it.
#include "platform/hyxOSG/nodes/geometry_node.h"

#include "platform/osg/attachment.h"
#include "reference/hyxOSG/nodes/geometry_node_index.h"
#include "reference/machinery/meshes/conversions.h"

#include <osg/NodeVisitor>

#include <algorithm>
#include <stdexcept>
#include <vector>

namespace hyxOSG {
namespace {

/// The hidden child of a node that is being copied. Hidden children are nobody's children to the scene graph, so that
/// they may form rings: what is met again on its own way is shared.
osg::Node* copyOfHidden(osg::Node* hidden, GeometryNode const& owner, osg::CopyOp const& copyOperation) {
    static thread_local std::vector<GeometryNode const*> way;
    if (std::find(way.begin(), way.end(), &owner) != way.end())
        return hidden;
    way.push_back(&owner);
    osg::Node* const copy = copyOperation(hidden);
    way.pop_back();
    return copy;
}

void checkFlag(GeometryNode::RenderFlag flag) {
    if (flag != GeometryNode::RENDER_DATA && flag != GeometryNode::GEOMETRY_DATA)
        throw std::invalid_argument("render flag " + std::to_string(static_cast<int>(flag)) +
                                    " does not exist, use 1 (RENDER_DATA) or 2 (GEOMETRY_DATA)");
}

void dropFromIndex(hyxCollide::Geometry const* geometry, GeometryNode const* node) {
    auto const [first, last] = geometryNodeIndex().equal_range(geometry);
    for (auto place = first; place != last; ++place)
        if (place->second == node) {
            geometryNodeIndex().erase(place);
            return;
        }
}

} // namespace

GeometryNodeIndex& geometryNodeIndex() {
    static auto& index = *new GeometryNodeIndex;
    return index;
}

struct GeometryNode::Implementation {
    hyxCollide::Geometry* geometry = nullptr; // forgotten when its remove event tells of its end
    bool autoRemove = true;
    RenderFlag selected = GEOMETRY_DATA;
    osg::ref_ptr<osg::Node> renderData, geometryData;
    hyxCollide::Geometry::RemoveEvent::CallbackType removal;
    hyxCollide::Geometry::ShapeChangeEvent::CallbackType shapeChange;

    osg::ref_ptr<osg::Node>& child(RenderFlag flag) { return flag == RENDER_DATA ? renderData : geometryData; }
};

GeometryNode::GeometryNode() : m_implementation(std::make_unique<Implementation>()) {
    listen();
}

GeometryNode::GeometryNode(hyxCollide::Geometry* geometry) : GeometryNode() {
    setGeometry(geometry);
}

GeometryNode::GeometryNode(GeometryNode const& other, osg::CopyOp const& copyOperation)
    : osg::MatrixTransform(other, copyOperation),
      shapeCallback(other.shapeCallback),
      m_implementation(std::make_unique<Implementation>()) {
    listen();
    m_implementation->autoRemove = other.m_implementation->autoRemove;
    m_implementation->selected = other.m_implementation->selected;
    for (RenderFlag const flag : {RENDER_DATA, GEOMETRY_DATA}) {
        osg::Node* const source = other.m_implementation->child(flag);
        unsigned int const place = source ? other.getChildIndex(source) : other.getNumChildren();
        m_implementation->child(flag) =
            place < getNumChildren() ? getChild(place) : copyOfHidden(source, other, copyOperation);
    }
    setGeometry(other.m_implementation->geometry);
}

GeometryNode::~GeometryNode() {
    setGeometry(nullptr);
}

void GeometryNode::listen() {
    // Counted as a child with updates of its own, the node is visited by each update traversal.
    setNumChildrenRequiringUpdateTraversal(getNumChildrenRequiringUpdateTraversal() + 1);
    m_implementation->shapeChange = {[this](hyxCollide::Geometry const* geometry) { shapeCallback(geometry); }};
    m_implementation->removal = {[this](hyxCollide::Geometry const* geometry) {
        // The one reference is that of who tells of the end; a geometry without a body and another holder lives on.
        bool const ends = geometry->getReferenceCount() <= 1 && !geometry->getRigidBody();
        if (ends)
            setGeometry(nullptr);
        if (m_implementation->autoRemove)
            removeFromParents();
    }};
}

void GeometryNode::setGeometry(hyxCollide::Geometry* geometry) {
    hyxCollide::Geometry*& present = m_implementation->geometry;
    if (geometry == present)
        return;
    if (present) {
        dropFromIndex(present, this);
        present->getRemoveEvent().remove(m_implementation->removal);
        present->getShapeChangeEvent().remove(m_implementation->shapeChange);
    }
    present = geometry;
    if (present) {
        geometryNodeIndex().emplace(present, this);
        present->getRemoveEvent().add(m_implementation->removal);
        present->getShapeChangeEvent().add(m_implementation->shapeChange);
        updateTransform();
    }
}

hyxCollide::Geometry* GeometryNode::getGeometry() {
    return m_implementation->geometry;
}

hyxCollide::Geometry const* GeometryNode::getGeometry() const {
    return m_implementation->geometry;
}

void GeometryNode::setAutoRemove(bool autoRemove) {
    m_implementation->autoRemove = autoRemove;
}

bool GeometryNode::getAutoRemove() const {
    return m_implementation->autoRemove;
}

void GeometryNode::removeNode(hyxCollide::Space*, hyxCollide::Geometry* geometry) {
    if (m_implementation->autoRemove && geometry && geometry == m_implementation->geometry)
        removeFromParents();
}

void GeometryNode::removeFromParents() {
    if (getNumParents() == 0)
        return;
    osg::ref_ptr<GeometryNode> const alive = this;
    while (getNumParents() > 0)
        getParent(0)->removeChild(this);
}

void GeometryNode::updateTransform() {
    if (!m_implementation->geometry)
        return;
    osg::Matrixd const transform = toOsg(m_implementation->geometry->getTransform());
    if (transform != getMatrix()) // a body at rest costs no new bounds
        setMatrix(transform);
}

void GeometryNode::selectRenderChild(RenderFlag flag) {
    checkFlag(flag);
    if (flag == m_implementation->selected)
        return;
    if (osg::Node* const next = m_implementation->child(flag))
        osg::requireAttachable(*this, *next);
    if (osg::Node* const hidden = m_implementation->child(m_implementation->selected))
        removeChild(hidden);
    m_implementation->selected = flag;
    if (osg::Node* const shown = m_implementation->child(flag))
        insertChild(0, shown);
}

GeometryNode::RenderFlag GeometryNode::getSelectedRenderChild() const {
    return m_implementation->selected;
}

void GeometryNode::setRenderChild(RenderFlag flag, osg::Node* node) {
    checkFlag(flag);
    osg::ref_ptr<osg::Node>& place = m_implementation->child(flag);
    if (place == node)
        return;
    if (node)
        osg::requireAttachable(*this, *node);
    bool const shown = flag == m_implementation->selected;
    if (shown && place)
        removeChild(place);
    place = node;
    if (shown && place)
        insertChild(0, place);
}

osg::Node* GeometryNode::getRenderChild(RenderFlag flag) {
    checkFlag(flag);
    return m_implementation->child(flag);
}

osg::Node const* GeometryNode::getRenderChild(RenderFlag flag) const {
    checkFlag(flag);
    return m_implementation->child(flag);
}

osg::Object* GeometryNode::cloneType() const {
    return new GeometryNode;
}

osg::Object* GeometryNode::clone(osg::CopyOp const& copyOperation) const {
    return new GeometryNode(*this, copyOperation);
}

bool GeometryNode::isSameKindAs(osg::Object const* object) const {
    return dynamic_cast<GeometryNode const*>(object);
}

char const* GeometryNode::className() const {
    return "GeometryNode";
}

char const* GeometryNode::libraryName() const {
    return "hyxOSG";
}

void GeometryNode::traverse(osg::NodeVisitor& visitor) {
    bool const updates = visitor.getVisitorType() == osg::NodeVisitor::UPDATE_VISITOR;
    if (updates)
        updateTransform();
    bool const childrenUpdate = getNumChildrenRequiringUpdateTraversal() > 1; // one is the node itself
    if (!updates || childrenUpdate)
        osg::MatrixTransform::traverse(visitor);
}

} // namespace hyxOSG
