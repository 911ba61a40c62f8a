// Picks bodies with the pointer and drags them with a spring.
#pragma once

#include "platform/hyxSDK/gui_event_listener.h"
#include "platform/hyxSDK/pick_result.h"

#include <memory>

namespace osg {
class Camera;
class Group;
} // namespace osg

namespace osgViewer {
class Viewer;
} // namespace osgViewer

namespace hyxSDK {
class Simulation;
} // namespace hyxSDK

namespace hyxOSG {

/// While the activating keys and button are down, holds the dynamic body under the pointer with a spring whose far end
/// follows the pointer in the plane parallel to the screen; the body turns and collides freely. The spring is drawn as
/// a line. Without a simulation or a camera nothing is picked.
///
/// The handler acts on events given to it; the application gives it those of its window.
class PickHandler : public hyxSDK::GuiEventListener {
public:
    /// Picks with the left button and a control key.
    /// \param viewer its camera is the one that is picked through; null: none until setCamera
    /// \param root the group that shows the spring; null: it is not drawn
    PickHandler(osgViewer::Viewer* viewer, osg::Group* root = nullptr);

    /// Lets the body go.
    void reset();

    /// Chooses the modifier keys that must be down when the button goes down: a body is picked when any of them is;
    /// 0: none is needed. Bits as in the window system's key mask (1, 2 shift; 4, 8 control; 16, 32 alt). Default 12.
    void setActivateModKeyMask(unsigned int mask);
    /// The modifier keys of which one must be down.
    unsigned int getActivateModKeyMask() const;
    /// Chooses the buttons that pick: 1 left, 2 middle, 4 right, or a sum. Default 1; 0: none.
    void setActivateMouseButton(unsigned int button);
    /// The buttons that pick.
    unsigned int getActivateMouseButton() const;
    /// The simulation whose bodies are picked; a body held before is let go. Null: nothing is picked.
    void setSimulation(hyxSDK::Simulation* simulation);
    /// The camera that is picked through. Null: nothing is picked.
    void setCamera(osg::Camera* camera);
    /// The camera that is picked through; null without one.
    osg::Camera* getCamera();

    /// Brings the drawn spring in step with the body and the pointer.
    void updateRenderState();
    /// Makes the drawn spring anew.
    /// \param radius of the balls at its ends, in metres
    /// \throws std::invalid_argument unless the radius is positive and finite
    void createMouseSpringRendering(float radius);

    /// What lies on the way from one point to another, in metres.
    /// \param all find everything on the way; false: only the nearest
    hyxSDK::PickResult intersect(hyx::Vec3 const& nearPoint, hyx::Vec3 const& farPoint, bool all);
    /// What lies under a point of the window.
    /// \param x,y pixels from the lower left corner
    /// \param all find everything under the point; false: only the nearest
    hyxSDK::PickResult intersect(float x, float y, bool all);
    /// The nearest under a point of the window; a dynamic body there is held by the spring until reset or until the
    /// button goes up.
    /// \param x,y pixels from the lower left corner
    hyxSDK::PickResult pick(float x, float y);
    /// The points of the near and far plane under a point of the window, in the frame of the simulation. A null camera,
    /// or one without a viewport, leaves the points as they are.
    /// \param x,y pixels from the lower left corner
    /// \param normalized x and y run from -1 to 1 over the window instead
    void getNearFarPoints(osg::Camera const* camera, hyx::Vec3& nearPoint, hyx::Vec3& farPoint, float x, float y,
                          bool normalized = false) const;

    /// Remembers the modifier keys. Never uses the event up.
    bool keyboard(int key, unsigned int modKeyMask, float x, float y, bool keydown) override;
    /// Picks when an activating button goes down and lets go when it goes up. True while a body is held, or was.
    bool mouse(hyxSDK::GuiEventListener::MouseButtonMask buttons, hyxSDK::GuiEventListener::MouseState state, float x,
               float y) override;
    /// Moves the spring's end. True while a body is held.
    bool mouseDragged(hyxSDK::GuiEventListener::MouseButtonMask buttons, float x, float y) override;
    /// Moves the spring's end as the camera moved, and the drawn spring.
    void update(float x, float y) override;

protected:
    ~PickHandler() override;

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxOSG
