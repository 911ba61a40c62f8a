// Puts nodes into a scene and takes them out again.
#include "reference/hyxOSG/renderers/frame_update.h"

#include "platform/osg/attachment.h"

#include <stdexcept>
#include <string>

namespace hyxOSG {

ShownNode::ShownNode(osg::Node* node, osg::Group* parent, char const* what, std::function<void()> update)
    : m_node(node), m_parent(parent), m_update(new FrameUpdate(std::move(update))) {
    if (!parent)
        throw std::invalid_argument(std::string(what) + " needs a group to draw under");
    osg::attach(*parent, *m_node);
    m_node->addUpdateCallback(m_update);
}

ShownNode::~ShownNode() {
    remove();
}

void ShownNode::remove() {
    m_removed = true;
    m_node->removeUpdateCallback(m_update);
    osg::ref_ptr<osg::Group> parent;
    if (m_parent.lock(parent))
        parent->removeChild(m_node);
}

} // namespace hyxOSG
