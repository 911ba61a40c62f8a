// Chooses between a window on the display and an off-screen one.
#include "reference/machinery/context/graphics_window.h"

#include "reference/machinery/context/driver_memory.h"
#include "reference/machinery/context/egl_window.h"
#include "reference/machinery/context/owner_process.h"
#include "reference/machinery/context/picture_size.h"
#include "reference/machinery/context/x_display.h"

#include <osg/GLExtensions>
#include <osgViewer/api/X11/GraphicsWindowX11>

#include <cstdlib>
#include <stdexcept>

namespace hyxOSG {
namespace {

WindowKind kindOfEnvironment(WindowKind kind) {
    char const* value = std::getenv("HYX_DISPLAY");
    std::string const word = value ? value : "";
    if (word.empty() || word == "auto")
        return kind;
    if (word == "window")
        return WindowKind::DISPLAY;
    if (word == "offscreen")
        return WindowKind::OFFSCREEN;
    throw std::invalid_argument("HYX_DISPLAY is '" + word + "'; it must be 'window', 'offscreen' or 'auto'");
}

void coverScreen(osg::GraphicsContext::Traits& traits) {
    osg::GraphicsContext::WindowingSystemInterface* system = osg::GraphicsContext::getWindowingSystemInterface();
    unsigned int width = 0, height = 0;
    if (system)
        system->getScreenResolution(traits, width, height);
    if (width == 0 || height == 0)
        return;
    traits.x = traits.y = 0;
    traits.width = width;
    traits.height = height;
    traits.windowDecoration = false;
}

osg::ref_ptr<osg::GraphicsContext::Traits> makeTraits(WindowRequest const& request, bool onDisplay) {
    requireMemory(contextMemory);
    osg::ref_ptr<osg::GraphicsContext::Traits> traits = new osg::GraphicsContext::Traits;
    if (onDisplay)
        traits->readDISPLAY();
    traits->setUndefinedScreenDetailsToDefaultScreen();
    traits->x = request.x;
    traits->y = request.y;
    traits->width = request.width;
    traits->height = request.height;
    traits->windowName = request.title;
    traits->windowDecoration = true;
    traits->supportsResize = request.resizable;
    traits->doubleBuffer = onDisplay;
    traits->vsync = request.vsync;
    traits->red = traits->green = traits->blue = 8;
    traits->depth = 24;
    traits->stencil = 8;
    traits->samples = request.samples;
    traits->sampleBuffers = request.samples > 0 ? 1 : 0;
    traits->sharedContext = request.shared;
    if (onDisplay && request.fullScreen)
        coverScreen(*traits);
    return traits;
}

/// Adds to the library's window what it lacks.
class DisplayWindow : public osgViewer::GraphicsWindowX11 {
public:
    using GraphicsWindowX11::GraphicsWindowX11;

    /// A viewer realizes its windows again, which the base class answers with a message.
    bool realizeImplementation() override {
        return isRealizedImplementation() || GraphicsWindowX11::realizeImplementation();
    }

    /// Kept without effect where the driver cannot wait for the display.
    void setSyncToVBlank(bool on) override {
        _traits->vsync = on;
        using SwapInterval = int (*)(unsigned int);
        auto const swapInterval = reinterpret_cast<SwapInterval>(osg::getGLExtensionFuncPtr("glXSwapIntervalMESA"));
        if (!swapInterval || !makeCurrent())
            return;
        swapInterval(on ? 1 : 0);
        releaseContext();
    }
};

/// Silences the scene-graph library while a display is tried that may not be able to draw.
class QuietNotify {
public:
    QuietNotify() { osg::setNotifyLevel(osg::ALWAYS); }

    ~QuietNotify() { osg::setNotifyLevel(m_level); }

private:
    osg::NotifySeverity m_level = osg::getNotifyLevel();
};

/// Null when the display cannot draw (no GLX, or not with so many samples).
osg::ref_ptr<osgViewer::GraphicsWindow> tryDisplayWindow(WindowRequest const& request) {
    QuietNotify const quiet;
    osg::ref_ptr<osgViewer::GraphicsWindow> window = new DisplayWindow(makeTraits(request, true).get());
    if (!window->valid() || !window->realize())
        return nullptr;
    window->setSyncToVBlank(request.vsync);
    return window;
}

osg::ref_ptr<osgViewer::GraphicsWindow> makeDisplayWindow(WindowRequest request) {
    osg::ref_ptr<osgViewer::GraphicsWindow> window = tryDisplayWindow(request);
    while (!window && request.samples > 0) {
        request.samples = request.samples > 2 ? request.samples / 2 : 0;
        window = tryDisplayWindow(request);
    }
    return window;
}

osg::ref_ptr<osgViewer::GraphicsWindow> makeOffscreenWindow(WindowRequest const& request) {
    osg::ref_ptr<osgViewer::GraphicsWindow> window = new EglWindow(makeTraits(request, false).get());
    if (!window->realize())
        throw std::runtime_error("the off-screen window could not be realized");
    return window;
}

} // namespace

void requireDrawingProcess() {
    static OwnerProcess const first; // the process that drew first
    if (first.isOther())
        throw std::runtime_error("this process was forked from one that had a window, and cannot draw: "
                                 "start it with multiprocessing.get_context('spawn')");
}

osg::ref_ptr<osgViewer::GraphicsWindow> makeGraphicsWindow(WindowRequest const& request) {
    requireDrawingProcess();
    if (!isPictureSize(request.width, request.height))
        throw std::invalid_argument("a window must be 1 to 16384 pixels wide and high");
    WindowKind const kind = kindOfEnvironment(request.kind);
    if (kind != WindowKind::OFFSCREEN && xDisplayAnswers()) {
        if (auto window = makeDisplayWindow(request))
            return window;
    }
    if (kind == WindowKind::DISPLAY)
        throw std::runtime_error(
            "a window was asked for, but no display answers (DISPLAY is missing, wrong or cannot draw); "
            "set HYX_DISPLAY=offscreen to draw without one");
    return makeOffscreenWindow(request);
}

osg::ref_ptr<osgViewer::GraphicsWindow> makeGraphicsWindow(int width, int height, std::string const& title,
                                                           WindowKind kind) {
    WindowRequest request;
    request.width = width;
    request.height = height;
    request.title = title;
    request.kind = kind;
    return makeGraphicsWindow(request);
}

bool isOffscreen(osg::GraphicsContext const* context) {
    return dynamic_cast<EglWindow const*>(context) != nullptr;
}

GLenum colorBuffer(osg::GraphicsContext const* context) {
    auto const* window = dynamic_cast<EglWindow const*>(context);
    return window ? window->colorBuffer() : GL_BACK;
}

unsigned long nativeWindow(osg::GraphicsContext const* context) {
    auto const* window = dynamic_cast<osgViewer::GraphicsWindowX11 const*>(context);
    return window ? const_cast<osgViewer::GraphicsWindowX11*>(window)->getWindow() : 0;
}

} // namespace hyxOSG
