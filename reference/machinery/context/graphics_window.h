// Windows to draw into: on the display where there is one, else off-screen.
#pragma once

#include <osg/ref_ptr>
#include <osgViewer/GraphicsWindow>

#include <string>

namespace hyxOSG {

enum class WindowKind {
    AUTOMATIC, ///< a window on the display when one answers, else off-screen
    DISPLAY,   ///< a window on the display, or a failure
    OFFSCREEN, ///< never on the display
};

/// What a window should be like.
struct WindowRequest {
    int x = 0;
    int y = 0;
    int width = 640;
    int height = 480;
    std::string title;
    WindowKind kind = WindowKind::AUTOMATIC;
    int samples = 0; ///< for multisampling; 0 for none, fewer are taken when the driver has not so many
    bool resizable = true;
    bool fullScreen = false; ///< on a display: covers the screen, whatever the size
    bool vsync = false;
    osg::GraphicsContext* shared = nullptr; ///< context to share textures with, or null
};

/// Throws in a process that was forked from one that has opened a window: the driver's threads are not copied.
void requireDrawingProcess();

/// Makes and realizes a window. The environment variable HYX_DISPLAY (`window`, `offscreen`, `auto`) overrides the
/// kind. Throws std::invalid_argument for sizes outside 1..16384 and for another value of the variable, and
/// std::runtime_error with the reasons when no window can be made.
osg::ref_ptr<osgViewer::GraphicsWindow> makeGraphicsWindow(WindowRequest const& request);

/// The same for a window of which only size, title and kind matter.
osg::ref_ptr<osgViewer::GraphicsWindow> makeGraphicsWindow(int width, int height, std::string const& title = "",
                                                           WindowKind kind = WindowKind::AUTOMATIC);

/// Whether `context` was made here and draws off-screen; false for null.
bool isOffscreen(osg::GraphicsContext const* context);

/// What cameras of `context` draw into and read from.
GLenum colorBuffer(osg::GraphicsContext const* context);

/// The number of the native window of `context`; 0 for an off-screen one, for none and for null.
unsigned long nativeWindow(osg::GraphicsContext const* context);

} // namespace hyxOSG
