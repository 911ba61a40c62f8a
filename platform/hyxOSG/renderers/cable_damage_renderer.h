// A cable in the colours of its wear.
#pragma once

#include "platform/hyx/objects/ref_ptr.h"
#include "platform/hyx/values/types.h"
#include "platform/hyxCable/cable_damage.h"
#include "platform/hyxSDK/event_listener.h"

#include <cstddef>
#include <memory>

namespace osg {
class Group;
} // namespace osg

namespace hyxOSG {

class GeometryNode;
class ScalarColorMap;

/// Draws a cable with each segment coloured by its damage, from blue (none) through green to red (the colour range's
/// maximum).
class CableDamageRenderer : public hyxSDK::EventListener {
public:
    /// Draws the cable of `damage` under `parent` as cylinders of `radius` metres.
    /// Throws `std::invalid_argument` for null or a radius that is not above 0.
    CableDamageRenderer(hyxCable::CableDamage* damage, double radius, osg::Group* parent);

    /// Colours by the damage of the present load, which is what is shown at first.
    void renderCurrent();
    /// Colours by the damage summed so far.
    void renderAccumulated();
    /// Whether the colours tell of the damage of the last step.
    bool isRenderingCurrent() const;
    /// Whether the colours tell of all damage so far.
    bool isRenderingAccumulated() const;
    /// Shows or hides the cable.
    void setEnableRendering(bool enable);
    bool getEnableRendering() const;
    /// The damage that is drawn all red; 0, as at first, takes the largest damage of the present moment.
    /// Throws `std::invalid_argument` below 0.
    void setColorRangeMax(double damage);
    double getColorRangeMax() const;
    /// The colours of the present picture, over damage. The same object until they change; writing to it changes no
    /// picture.
    hyx::ref_ptr<ScalarColorMap> getColorScale() const;
    /// The node that draws segment `segment`, null past the end.
    GeometryNode* getOsgNode(std::size_t segment);

    /// Follows the cable and its damage at the end of a step.
    void last(double time) override;
    /// Takes the cable out of the scene.
    void removeNotification() override;

protected:
    ~CableDamageRenderer() override;

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxOSG
