// Drawing into the window of a host program.
#pragma once

#include "platform/hyx/values/vec3.h"
#include "platform/hyxOSG/application/example_application.h"

#include <osg/Camera>
#include <osg/Group>
#include <osgGA/EventQueue>

#include <memory>

namespace hyxSDK {
class Simulation;
} // namespace hyxSDK

namespace hyxOSG {

class GeometryNode;
class SceneDecorator;

/// The viewer inside a window of a host application.
///
/// The host owns the OpenGL context and makes it current before `init`, `resize`, `frame` and the destruction of the
/// window; the window draws into the frame buffer that is bound then. The host also steps the simulation, forwards its
/// input and swaps its buffers. Positions of the mouse are pixels from the upper left corner of the rectangle drawn.
/// Several windows may live beside each other.
class EmbeddedGLWindow {
public:
    /// Node mask bits of the parts of the scene, those of the application.
    enum NodeMask : unsigned int {
        MAIN_SCENE_MASK = ExampleApplication::MAIN_SCENE_MASK,
        DEBUG_RENDER_MASK = ExampleApplication::DEBUG_RENDER_MASK,
        OSG_RENDER_MASK = ExampleApplication::OSG_RENDER_MASK,
        HUD_MASK = ExampleApplication::HUD_MASK,
        DECORATOR_MASK = ExampleApplication::DECORATOR_MASK
    };

    EmbeddedGLWindow();
    /// Releases what the window holds in the host's context, if that is current; else it ends with the context.
    ~EmbeddedGLWindow();
    EmbeddedGLWindow(EmbeddedGLWindow const&) = delete;
    EmbeddedGLWindow& operator=(EmbeddedGLWindow const&) = delete;

    /// Sets up the viewer for a rectangle of the host's frame buffer, in pixels from its lower left corner. Once more,
    /// with another context current, it moves there with all that it shows, as when a toolkit gives the host's widget
    /// another parent. False when a size is not positive, or it is already set up in this context. Throws
    /// `std::runtime_error` when no OpenGL context is current, or one of OpenGL ES or of the core profile.
    bool init(int x, int y, int width, int height);
    /// Follows a change of the host's window; sizes below one pixel are ignored, as when it is minimised.
    void resize(int x, int y, int width, int height);
    /// Handles the forwarded input and draws one frame. Throws `std::runtime_error` before `init` and while another
    /// context is current.
    void frame();
    /// Removes the content of the scene (not the decoration) and the simulation.
    void clear();

    /// Width in pixels, 0 before `init`.
    int getWidth() const;
    /// Height in pixels, 0 before `init`.
    int getHeight() const;

    /// The mouse is at these pixels. This and the other events throw `std::runtime_error` before `init`.
    void mouseMoveEvent(int x, int y);
    /// A mouse button went down.
    /// \param button 1 left, 2 middle, 3 right.
    void mousePressEvent(int x, int y, int button);
    /// A mouse button went up.
    /// \param button 1 left, 2 middle, 3 right.
    void mouseReleaseEvent(int x, int y, int button);
    /// A key went down.
    /// \param key a character code or a key symbol of osgGA.
    /// \param modifiers mask of osgGA modifier keys held.
    void keyPressEvent(int key, int modifiers);
    /// A key went up.
    /// \param key a character code or a key symbol of osgGA.
    /// \param modifiers mask of osgGA modifier keys held.
    void keyReleaseEvent(int key, int modifiers);
    /// The wheel was turned: up when `delta` is above zero, down when below, one step for each 120 and at least one.
    void wheelEvent(int delta);
    /// The queue that takes the forwarded input, or null before `init`.
    osgGA::EventQueue* getEventQueue() const;

    /// Shows a simulation: visuals of its bodies are put under `getRoot()`. Kept alive; null removes it. Replaces the
    /// one before.
    void setSimulation(hyxSDK::Simulation* simulation);
    /// The simulation that is shown, or null.
    hyxSDK::Simulation* getSimulation() const;
    /// Removes the simulation and the visuals that `setSimulation` made. The simulation itself is untouched.
    void removeSimulation();

    /// The group to put nodes under; owned by the window.
    osg::Group const* getRoot() const;
    /// The group to put nodes under; owned by the window.
    osg::Group* getRoot();
    /// The camera of the viewer; owned by the window.
    osg::Camera const* getCamera() const;
    /// The camera of the viewer; owned by the window.
    osg::Camera* getCamera();
    /// The decoration around the scene: lights, background, texts; owned by the window.
    SceneDecorator* getSceneDecorator() const;

    /// Moves the camera so that the whole scene is seen.
    void fitSceneIntoView();
    /// The radius in metres of a sphere around what a group holds (of its bounding boxes, so up to 1.74 times the
    /// smallest); null means the whole scene, an empty one gives 0.
    float getSceneRadius(osg::Group* group) const;
    /// Lets the camera follow the origin of a node, seen from `eye` metres away from it; null returns to the free
    /// camera.
    void setOrbitCamera(GeometryNode* node, hyx::Vec3 const& eye);

    /// Draws polygons as 0x1B00 points, 0x1B01 lines or 0x1B02 filled (the numbers of OpenGL); throws
    /// `std::invalid_argument` for others.
    void setPolygonMode(int mode);
    /// The polygon mode, 0x1B02 (filled) unless set.
    int getPolygonMode() const;

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace hyxOSG
