// Taking part in what the user does with mouse and keyboard.
#pragma once

#include "platform/hyx/values/affine_matrix4x4.h"
#include "platform/hyxSDK/event_listener.h"

namespace hyxSDK {

/// Is called with the input events of the window that shows its simulation. Positions are in pixels from the lower left
/// corner. Bool results say whether the event is used up: true keeps it from those behind. This class uses up nothing.
class GuiEventListener : public EventListener {
public:
    /// The events that a listener gets; its mask is a sum of these.
    enum ActivationMask {
        /// Buttons pressed and released, and the pointer moved meanwhile.
        MOUSE = 1,
        /// The pointer moved while no button is down.
        MOUSE_MOVED = 2,
        /// The pointer moved while a button is down, for a listener that does not want the buttons themselves.
        MOUSE_DRAGGED = 4,
        KEYBOARD = 8,
        /// Once a frame.
        UPDATE = 16,
        DEFAULT = MOUSE | KEYBOARD | UPDATE,
        ALL = MOUSE | MOUSE_MOVED | MOUSE_DRAGGED | KEYBOARD | UPDATE
    };

    enum MouseButtonMask { NONE = 0, LEFT = 1, MIDDLE = 2, RIGHT = 4 };

    enum MouseState { DOWN = 0, UP = 1, DOUBLE_CLICK = 2 };

    explicit GuiEventListener(ActivationMask mask = DEFAULT) { EventListener::setMask(mask); }

    /// `buttons` is the sum of those that are down.
    virtual bool mouseDragged(MouseButtonMask buttons, float x, float y);
    /// Called when the mouse moves; the place in pixels from the lower left. True: nobody else is told.
    virtual bool mouseMoved(float x, float y);
    /// Called when a button goes down or up; the place in pixels from the lower left. True: nobody else is told.
    virtual bool mouse(MouseButtonMask buttons, MouseState state, float x, float y);
    /// `key` is the key's symbol: its character, or a code above 0xff00. `modKeyMask` holds shift, control and the like
    /// as the window system has them.
    virtual bool keyboard(int key, unsigned int modKeyMask, float x, float y, bool keydown);
    /// Once a frame, with the pointer's position.
    virtual void update(float x, float y);
    /// Receives the transform from the window's view to the world whenever the camera moved.
    virtual void setInverseTransform(hyx::AffineMatrix4x4 const& matrix);

    /// Whether the mask has any of these bits.
    bool wants(int activation) const { return (getMask() & activation) != 0; }

protected:
    ~GuiEventListener() override = default;
};

} // namespace hyxSDK
