// What a renderer does at the start of each frame.
#pragma once

#include <osg/Callback>
#include <osg/Group>
#include <osg/observer_ptr>

#include <functional>

namespace hyxOSG {

/// Calls a function at each update traversal of a node.
class FrameUpdate : public osg::NodeCallback {
public:
    explicit FrameUpdate(std::function<void()> update) : m_update(std::move(update)) {}

    void operator()(osg::Node* node, osg::NodeVisitor* visitor) override {
        m_update();
        traverse(node, visitor);
    }

private:
    std::function<void()> m_update;
};

/// A renderer's node under its parent, for as long as the renderer lives and is not taken out. The parent is not kept
/// alive.
class ShownNode {
public:
    /// Puts `node` under `parent`; throws std::invalid_argument, in the words of `what`, for a null parent.
    ShownNode(osg::Node* node, osg::Group* parent, char const* what, std::function<void()> update);
    ~ShownNode();
    ShownNode(ShownNode const&) = delete;
    ShownNode& operator=(ShownNode const&) = delete;

    /// Takes the node out for good; it is updated no more.
    void remove();

    bool isRemoved() const { return m_removed; }

private:
    osg::ref_ptr<osg::Node> m_node;
    osg::observer_ptr<osg::Group> m_parent;
    osg::ref_ptr<FrameUpdate> m_update;
    bool m_removed = false;
};

} // namespace hyxOSG
