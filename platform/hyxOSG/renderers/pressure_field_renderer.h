// Shows the pressure in a contact as coloured triangles.
#pragma once

#include "platform/hyx/objects/ref_ptr.h"
#include "platform/hyx/objects/referenced.h"
#include "platform/hyx/values/affine_matrix4x4.h"
#include "platform/hyx/values/types.h"
#include "platform/hyxModel/triangle_data.h"

#include <osg/Group>

#include <memory>

namespace hyxOSG {

class ScalarColorMap;

/// Collects the triangles of a pressure field and draws them, coloured from blue at no pressure to red at the highest.
/// One round is clear(), addTriangle() for each triangle, done(); what is on screen changes at done() only.
class PressureFieldRenderer : public hyx::Referenced {
public:
    /// \param root the group that the field is put under. Null: nothing is drawn.
    /// \param maxPressure pascal at the highest colour. Default 0: the largest pressure of the round.
    /// \throws std::invalid_argument for a negative value or one that is not finite
    explicit PressureFieldRenderer(osg::Group* root, hyx::Real maxPressure = 0);

    /// Adds one triangle to the round.
    /// \param triangle corners and the pressure at each; not finite: left out
    /// \param transform from the triangle's frame to the frame of the field
    virtual void addTriangle(hyxModel::TriangleData const& triangle, hyx::AffineMatrix4x4 const& transform);

    /// Forgets the triangles added so far.
    virtual void clear();

    /// Ends the round: the triangles added since clear() are shown.
    virtual void done();

    /// Moves the whole field.
    /// \param transform from the frame of the field to the world
    virtual void updateTransform(hyx::AffineMatrix4x4 const& transform);

    /// The colours of what is shown, over pascal. The same object until they change; writing to it changes no picture.
    hyx::ref_ptr<ScalarColorMap> getColorScale() const;

protected:
    ~PressureFieldRenderer() override;

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxOSG
