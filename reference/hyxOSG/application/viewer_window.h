// The viewer of an application and its window.
#pragma once

#include "reference/hyxOSG/application/picture_reader.h"
#include "reference/hyxOSG/application/scene_graph.h"
#include "reference/machinery/context/frame_fence.h"
#include "reference/machinery/context/graphics_window.h"
#include "reference/machinery/context/owner_process.h"

#include <osgViewer/Viewer>

#include <functional>
#include <thread>

namespace hyxOSG {

/// Gives the parts of a frame one by one, so that a simulation can step between events and drawing.
class FrameViewer : public osgViewer::Viewer {
public:
    /// What the library does before the first frame; nothing later.
    void begin();
};

/// One window with one viewer, driven frame by frame on the calling thread.
class ViewerWindow {
public:
    ViewerWindow(WindowRequest const& request, DrawnRoot* scene);
    ~ViewerWindow();

    osgViewer::Viewer* viewer() const { return m_viewer; }

    osg::Camera* camera() const { return m_viewer->getCamera(); }

    osgViewer::GraphicsWindow* window() const { return m_window; }

    /// Whether there is still a window to draw into.
    bool open() const { return m_window->isRealized(); }

    bool offscreen() const { return isOffscreen(m_window); }

    /// How many samples a pixel the driver gave; 0 for none.
    int samples() const { return m_samples; }

    /// Takes in the events that have arrived. `time` is the simulated time that callbacks of the scene see.
    void handleEvents(double time);
    /// Updates the scene and draws what `pass` names; at most one frame behind the caller.
    void draw(Pass pass = Pass::EVERYTHING);

    /// Whether a callback that `isIdle` does not know, or says false of, waits for the view to be drawn.
    bool viewIsWaitedFor(std::function<bool(osg::Camera::DrawCallback const*)> const& isIdle) const;

    /// Rows of RGB bytes from the top, in the size of the camera's viewport, of the last frame; of a new one with
    /// `fresh`. Throws std::runtime_error when the window is closed.
    void readPicture(double time, bool fresh, unsigned char* rgb);

    /// Draws a frame and reads its picture. Throws std::runtime_error when the window is closed.
    osg::ref_ptr<osg::Image> grab(double time);

    /// False when the window system refuses.
    bool setRectangle(int x, int y, int width, int height);

private:
    void makeCamera(int width, int height);
    void drawScene(Pass pass);
    void drawWithCallback(osg::Camera::DrawCallback* callback, Pass pass);
    /// Throws where nothing can be drawn: in a forked child, and on another thread.
    void requireOwner() const;

    osg::ref_ptr<osgViewer::GraphicsWindow> m_window;
    osg::ref_ptr<FrameViewer> m_viewer;
    osg::ref_ptr<DrawnRoot> m_scene;
    PictureReader m_reader;
    bool m_viewIsCurrent = false; ///< the frame buffer holds the view of the last frame
    FrameFence m_fence;
    int m_samples = 0;
    OwnerProcess m_process;
    std::thread::id m_thread = std::this_thread::get_id();
};

} // namespace hyxOSG
