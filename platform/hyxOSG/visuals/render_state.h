// How visuals are drawn: outlines, edges, hidden, shadows.
#pragma once

#include "platform/hyxRender/color.h"

#include <cstddef>

namespace osg {
class Node;
} // namespace osg

namespace hyxOSG {

// Each gives false for a null node.

/// A line of `width` pixels around the silhouette of what is below `node`. A drawing context without a stencil buffer
/// shows none. A width that is not positive and finite raises std::invalid_argument. True when the state is now as
/// asked.
bool setEnableOutline(osg::Node* node, bool enable, hyxRender::Color const& color = hyxRender::Color(1, 1, 0, 1),
                      float width = 4.0f);

/// Whether `node` has an outline.
bool getEnableOutline(osg::Node* node);

/// Draws edges instead of faces while on. True when the mode was set.
bool setEnableWireFrameMode(osg::Node* node, bool enable);

/// Draws edges, whatever the nodes above or below say. True when the mode was set.
bool forceWireFrameModeOn(osg::Node* node);

/// Changes between edges and faces. True when edges are drawn from now on.
bool toggleWireFrameMode(osg::Node* node);

/// New smooth normals for all triangle meshes under `node`: edges where the faces meet at more than `creaseAngle`
/// radians stay sharp. The number of meshes changed, 0 for null. An angle outside 0..pi raises std::invalid_argument.
std::size_t smoothNormals(osg::Node* node, float creaseAngle = 0.7854f);

} // namespace hyxOSG
