// Builds the application's groups and moves scenes in and out.
#include "reference/hyxOSG/application/scene_graph.h"

#include "platform/hyxOSG/application/example_application.h"
#include "platform/osg/attachment.h"
#include "reference/machinery/meshes/endless_geode.h"
#include "reference/machinery/shading/node_state.h"

#include <osg/Depth>

namespace hyxOSG {
namespace {

using App = ExampleApplication;

osg::Matrixd toOsg(hyx::AffineMatrix4x4 const& matrix) {
    return osg::Matrixd(matrix.ptr());
}

} // namespace

void DrawnRoot::traverse(osg::NodeVisitor& visitor) {
    if (pass == Pass::EVERYTHING || visitor.getVisitorType() != osg::NodeVisitor::CULL_VISITOR) {
        osg::Group::traverse(visitor);
        return;
    }
    for (unsigned int i = 0; i < getNumChildren(); ++i)
        if (bool const isTarget = getChild(i)->asCamera(); isTarget == (pass == Pass::TARGETS))
            getChild(i)->accept(visitor);
}

SceneGraph::SceneGraph(int width, int height)
    : m_root(new DrawnRoot),
      m_decorator(new SceneDecorator(width, height)),
      m_switch(new osg::Switch),
      m_transform(new osg::MatrixTransform),
      m_sceneRoot(new osg::Group),
      m_libraryRoot(new osg::Group),
      m_markers(new osg::Group),
      m_debugTransform(new osg::MatrixTransform) {
    m_root->setName("root");
    m_sceneRoot->setName("sceneRoot");
    m_libraryRoot->setName("sceneHyxOSGRoot");
    m_sceneRoot->setNodeMask(App::MAIN_SCENE_MASK | App::OSG_RENDER_MASK | App::CASTS_SHADOWS_MASK |
                             App::RECIEVES_SHADOWS_MASK);
    m_libraryRoot->setNodeMask(m_sceneRoot->getNodeMask());
    // Bounds of all that moves would be worked out anew for each picture, to leave out what one mostly looks at.
    m_sceneRoot->setCullingActive(false);
    m_markers->setNodeMask(App::OSG_RENDER_MASK);
    m_debugTransform->setNodeMask(App::DEBUG_RENDER_MASK);
    m_markers->getOrCreateStateSet()->setMode(GL_LIGHTING, keptOff);
    // A little nearer than they are, so that a ground in their plane does not hide them.
    m_markers->getStateSet()->setAttributeAndModes(new osg::Depth(osg::Depth::LEQUAL, 0, 0.9999));
    m_debugTransform->getOrCreateStateSet()->setMode(GL_LIGHTING, keptOff);

    m_transform->addChild(m_sceneRoot);
    m_transform->addChild(m_libraryRoot);
    m_transform->addChild(m_markers);
    m_switch->addChild(m_transform);
    m_decorator->addChild(m_switch);
    m_root->addChild(m_decorator);
    m_root->addChild(m_debugTransform);
}

void SceneGraph::setScene(osg::Group* scene) {
    osg::ref_ptr<osg::Group> next = scene; // may be held by the present scene alone
    if (next && next != m_sceneRoot)
        osg::requireAttachable(*m_sceneRoot, *next);
    if (m_scene)
        m_sceneRoot->removeChild(m_scene);
    m_scene = next;
    // A script may return the scene root itself, or a group that it has put there already.
    if (m_scene && m_scene != m_sceneRoot && !m_sceneRoot->containsNode(m_scene))
        m_sceneRoot->addChild(m_scene);
}

void SceneGraph::clear() {
    m_scene = nullptr;
    m_sceneRoot->removeChildren(0, m_sceneRoot->getNumChildren());
    m_libraryRoot->removeChildren(0, m_libraryRoot->getNumChildren());
}

SceneGraph::Nodes SceneGraph::childrenOf(osg::Group const& group) {
    Nodes nodes;
    for (unsigned int i = 0; i < group.getNumChildren(); ++i)
        nodes.emplace_back(const_cast<osg::Node*>(group.getChild(i)));
    return nodes;
}

void SceneGraph::setChildren(osg::Group& group, Nodes const& nodes) {
    group.removeChildren(0, group.getNumChildren());
    for (auto const& node : nodes)
        group.addChild(node);
}

SceneGraph::Content SceneGraph::content() const {
    return {m_scene, childrenOf(*m_sceneRoot), childrenOf(*m_libraryRoot)};
}

void SceneGraph::setContent(Content const& content) {
    m_scene = content.scene;
    setChildren(*m_sceneRoot, content.sceneNodes);
    setChildren(*m_libraryRoot, content.libraryNodes);
}

void SceneGraph::setFrames(std::pair<osg::Matrixd, osg::Matrixd> const& frames) {
    m_transform->setMatrix(frames.first);
    m_debugInverse = frames.second;
    updateDebugTransform();
}

void SceneGraph::setTransform(hyx::AffineMatrix4x4 const& transform) {
    m_transform->setMatrix(toOsg(transform));
    updateDebugTransform();
}

hyx::AffineMatrix4x4 SceneGraph::transform() const {
    return hyx::AffineMatrix4x4(m_transform->getMatrix().ptr());
}

void SceneGraph::setDebugInverse(hyx::AffineMatrix4x4 const& matrix) {
    m_debugInverse = toOsg(matrix.inverse());
    updateDebugTransform();
}

void SceneGraph::updateDebugTransform() {
    m_debugTransform->setMatrix(m_debugInverse * m_transform->getMatrix());
}

osg::BoundingSphere SceneGraph::boundBy(osg::ComputeBoundsVisitor& visitor) const {
    visitor.pushMatrix(const_cast<osg::Matrixd&>(m_transform->getMatrix()));
    m_sceneRoot->accept(visitor);
    m_libraryRoot->accept(visitor);
    osg::BoundingBox const& box = visitor.getBoundingBox();
    return box.valid() ? osg::BoundingSphere(box) : osg::BoundingSphere();
}

osg::BoundingSphere SceneGraph::sceneBound() const {
    ComputeContentBounds content;
    osg::BoundingSphere const sphere = boundBy(content);
    if (sphere.valid())
        return sphere;
    osg::ComputeBoundsVisitor everything;
    return boundBy(everything);
}

} // namespace hyxOSG
