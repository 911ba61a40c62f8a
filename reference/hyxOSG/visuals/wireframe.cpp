// Edges instead of faces.

#include "platform/hyxOSG/visuals/render_state.h"
#include "reference/machinery/shading/node_state.h"

#include <osg/PolygonMode>

namespace hyxOSG {
namespace {

bool drawsEdges(osg::Node& node) {
    auto const* const state = node.getStateSet();
    auto const* const mode =
        state ? static_cast<osg::PolygonMode const*>(state->getAttribute(osg::StateAttribute::POLYGONMODE)) : nullptr;
    return mode && mode->getMode(osg::PolygonMode::FRONT) == osg::PolygonMode::LINE;
}

void drawEdges(osg::Node& node, osg::StateAttribute::GLModeValue value) {
    writableStateSet(node).setAttribute(new osg::PolygonMode(osg::PolygonMode::FRONT_AND_BACK, osg::PolygonMode::LINE),
                                        value);
}

} // namespace

bool setEnableWireFrameMode(osg::Node* node, bool enable) {
    if (!node)
        return false;
    if (enable)
        drawEdges(*node, osg::StateAttribute::ON);
    else if (node->getStateSet())
        writableStateSet(*node).removeAttribute(osg::StateAttribute::POLYGONMODE);
    return true;
}

bool forceWireFrameModeOn(osg::Node* node) {
    if (node)
        drawEdges(*node, setByScript);
    return node != nullptr;
}

bool toggleWireFrameMode(osg::Node* node) {
    bool const enable = node && !drawsEdges(*node);
    setEnableWireFrameMode(node, enable);
    return enable;
}

} // namespace hyxOSG
