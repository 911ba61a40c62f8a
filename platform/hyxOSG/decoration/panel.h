// A flat coloured field on the head-up display.
#pragma once

#include "platform/hyx/values/vec2.h"
#include "platform/hyx/values/vec4.h"

#include <osg/Group>

#include <memory>

namespace hyxOSG {

/// A rectangle drawn over the scene for one object of the simulation, which is its key. Position and size are in pixels
/// of the head-up display that it was made for.
class Panel {
public:
    /// Makes a panel, 100 by 20 pixels at the origin, half transparent grey, and adds it to a group.
    /// \param hud the group that draws the panel; null makes a panel that is not valid
    /// \param key the object that the panel belongs to; only its address is used
    Panel(osg::Group* hud, void const* key);
    ~Panel();

    /// Moves the lower left corner.
    /// \throws std::invalid_argument for coordinates that are not finite
    void setPosition(hyx::Vec2 const& position);
    /// The lower left corner.
    hyx::Vec2 getPosition() const;
    /// Sets width and height.
    /// \throws std::invalid_argument for a size that is negative or not finite
    void setSize(hyx::Vec2 const& size);
    /// Width and height.
    hyx::Vec2 getSize() const;
    /// Sets the colour, components 0 to 1, the fourth one the opacity.
    void setColor(hyx::Vec4 const& color);
    /// The colour.
    hyx::Vec4 getColor() const;

    /// Draws the panel, or leaves it out; it stays on its group. Drawn at first.
    void setShown(bool shown);

    /// Takes the panel off a group; after that it is not valid. Null, or a group that does not hold it, changes
    /// nothing.
    void uninitialize(osg::Group* hud);
    /// Whether the panel stands on a group.
    bool isValid() const;
    /// Brings the drawn rectangle up to date with position, size and colour.
    void update();
    /// Whether the panel belongs to this object.
    bool match(void const* key) const;

    Panel(Panel const&) = delete;
    Panel& operator=(Panel const&) = delete;

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxOSG
