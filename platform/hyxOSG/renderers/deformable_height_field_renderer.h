// Draws a height field that is being deformed.
#pragma once

#include "platform/hyxSDK/event_listener.h"

#include <osg/Group>

#include <memory>

namespace hyxModel {
class HeightFieldDeformer;
} // namespace hyxModel

namespace hyxOSG {

class GeometryNode;

/// Draws the height field of a deformer as tiles; after each step only the tiles that changed are rebuilt, in place.
/// Add the renderer to the simulation, or call last() yourself.
class DeformableHeightFieldRenderer : public hyxSDK::EventListener {
public:
    /// \param deformer the deformer whose height field is drawn; kept alive. Null: not valid, nothing is drawn.
    /// \param root the group that the field is put under. Null: the node is made and can be put anywhere.
    DeformableHeightFieldRenderer(hyxModel::HeightFieldDeformer* deformer, osg::Group* root);

    /// Brings the tiles that changed up to date.
    /// \param timeStamp simulated time, seconds
    void last(hyx::TimeStamp timeStamp) override;

    /// The node that shows the height field, owned by the renderer; null when the renderer is not valid.
    GeometryNode* getHeightFieldNode() const;

    /// Draws lines instead of surfaces from now on.
    void forceWireFrameRendering();

    /// Makes the next last() rebuild every tile.
    void setAsDirty();

    /// Whether there is a height field to draw.
    bool isValid() const;

protected:
    ~DeformableHeightFieldRenderer() override;

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxOSG
