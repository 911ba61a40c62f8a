// Drives the scene-graph library's viewer.
#include "reference/hyxOSG/application/viewer_window.h"

#include "reference/hyxPython/native_work.h"
#include "reference/machinery/context/driver_memory.h"
#include "reference/machinery/context/resolved_frame.h"
#include "reference/machinery/viewing/drawing_failure.h"
#include "reference/machinery/viewing/processors.h"

#include <osg/Multisample>

#include <stdexcept>

namespace hyxOSG {
namespace {

/// Reads the picture that was just drawn, when one is wanted.
class GrabCallback : public osg::Camera::DrawCallback {
public:
    explicit GrabCallback(osg::Image* image) : m_image(image) {}

    void operator()(osg::RenderInfo& info) const override {
        osg::Viewport const* viewport = info.getCurrentCamera()->getViewport();
        ResolvedFrame const frame(*info.getState(), int(viewport->x() + viewport->width()),
                                  int(viewport->y() + viewport->height()));
        m_image->readPixels(int(viewport->x()), int(viewport->y()), int(viewport->width()), int(viewport->height()),
                            GL_RGB, GL_UNSIGNED_BYTE);
    }

private:
    osg::ref_ptr<osg::Image> m_image;
};

/// Reads the picture before the buffers of a window on a display are exchanged.
class ReadCallback : public osg::Camera::DrawCallback {
public:
    ReadCallback(PictureReader& reader, unsigned char* rgb) : m_reader(reader), m_rgb(rgb) {}

    void operator()(osg::RenderInfo& info) const override {
        m_reader.read(*info.getCurrentCamera()->getViewport(), *info.getState(), m_rgb);
    }

private:
    PictureReader& m_reader;
    unsigned char* m_rgb;
};

int samplesOf(osgViewer::GraphicsWindow& window) {
    GLint samples = 0;
    if (window.makeCurrent()) {
        glGetIntegerv(GL_SAMPLES_ARB, &samples);
        window.releaseContext();
    }
    return samples;
}

class FenceCallback : public osg::Camera::DrawCallback {
public:
    explicit FenceCallback(FrameFence& fence) : m_fence(fence) {}

    void operator()(osg::RenderInfo& info) const override {
        // The state knows arrays by their address, which later ones may have that come when these are gone.
        info.getState()->disableAllVertexArrays();
        m_fence.endFrame(*info.getState());
    }

private:
    FrameFence& m_fence;
};

} // namespace

void FrameViewer::begin() {
    if (!_firstFrame)
        return;
    viewerInit();
    if (!isRealized())
        realize();
    _firstFrame = false;
}

ViewerWindow::ViewerWindow(WindowRequest const& request, DrawnRoot* scene)
    : m_window(makeGraphicsWindow(request)), m_viewer(new FrameViewer), m_scene(scene) {
    keepProcessors(*m_viewer);
    m_viewer->setThreadingModel(osgViewer::ViewerBase::SingleThreaded); // callbacks come on the caller's thread
    m_viewer->setReleaseContextAtEndOfFrameHint(false);
    m_viewer->setKeyEventSetsDone(0);
    m_viewer->setQuitEventSetsDone(false);
    m_viewer->setLightingMode(osg::View::NO_LIGHT); // light 0 is the decorator's
    makeCamera(m_window->getTraits()->width, m_window->getTraits()->height);
    m_viewer->setSceneData(scene);
    m_viewer->realize();
    m_samples = samplesOf(*m_window);
}

// A script may keep the viewer or its camera for longer: nothing in them leads back to here or to the application, and
// there is no window to draw into.
ViewerWindow::~ViewerWindow() {
    if (m_process.isOther()) { // closing would wait for threads of the driver that were not copied
        static_cast<void>(m_window.release());
        static_cast<void>(m_viewer.release());
        return;
    }
    if (open() && m_window->makeCurrent()) {
        m_fence.finish(*m_window->getState());
        m_window->releaseContext();
    }
    camera()->setFinalDrawCallback(nullptr);
    m_viewer->getEventHandlers().clear();
    m_viewer->setDone(true);
    m_window->close();
    // A camera without a context releases what it draws in all contexts: those of other applications too.
    camera()->removeChildren(0, camera()->getNumChildren());
    // Whatever is not in the scene now, shared shaders and nodes that a script holds, remembers what it had in this
    // context by its number. That is free now; taking it for good keeps it from later windows.
    osg::GraphicsContext::createNewContextID();
}

void ViewerWindow::makeCamera(int width, int height) {
    osg::Camera* camera = m_viewer->getCamera();
    camera->setGraphicsContext(m_window);
    camera->setViewport(0, 0, width, height);
    camera->setProjectionMatrixAsPerspective(45, double(width) / height, 0.1, 1000);
    camera->setClearMask(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT);
    GLenum const buffer = colorBuffer(m_window);
    camera->setDrawBuffer(buffer);
    camera->setReadBuffer(buffer);
    // The library takes it for off where nobody says it, and then leaves it on for those who switch it off.
    camera->getOrCreateStateSet()->setMode(GL_MULTISAMPLE_ARB, osg::StateAttribute::ON);
    camera->addFinalDrawCallback(new FenceCallback(m_fence));
}

void ViewerWindow::requireOwner() const {
    requireDrawingProcess();
    if (std::this_thread::get_id() != m_thread)
        throw std::runtime_error("the window belongs to the thread that opened it, which alone can draw in it");
}

void ViewerWindow::handleEvents(double time) {
    requireOwner();
    m_viewer->begin();
    if (!open())
        return;
    m_viewer->advance(time);
    m_viewer->eventTraversal();
}

void ViewerWindow::draw(Pass pass) {
    if (!open())
        return;
    requireOwner();
    m_viewer->updateTraversal();
    drawScene(pass);
}

void ViewerWindow::drawScene(Pass pass) {
    requireMemory(frameMemory);
    m_window->makeCurrent(); // the viewer only remembers that it did; another window may have taken its place
    {
        hyxPython::NativeWork const work;
        m_scene->pass = pass;
        m_viewer->renderingTraversals();
        m_scene->pass = Pass::EVERYTHING; // a script may draw with the viewer itself
    }
    m_viewIsCurrent = pass != Pass::TARGETS;
    DrawingFailure::raise();
}

void ViewerWindow::drawWithCallback(osg::Camera::DrawCallback* callback, Pass pass) {
    struct Added { // also when an exception passes, for the callback points to what is the caller's

        Added(osg::Camera* camera, osg::Camera::DrawCallback* callback) : camera(camera), callback(callback) {
            camera->addFinalDrawCallback(callback);
        }

        ~Added() { camera->removeFinalDrawCallback(callback); }

        osg::Camera* camera;
        osg::Camera::DrawCallback* callback;
    } const added(camera(), callback);

    if (pass == Pass::VIEW) // the rest of this frame is done
        drawScene(pass);
    else
        draw(pass);
}

bool ViewerWindow::viewIsWaitedFor(std::function<bool(osg::Camera::DrawCallback const*)> const& isIdle) const {
    osg::Camera const& camera = *m_viewer->getCamera();
    if (camera.getInitialDrawCallback() || camera.getPreDrawCallback() || camera.getPostDrawCallback())
        return true;
    for (osg::Callback const* callback = camera.getFinalDrawCallback(); callback;
         callback = callback->getNestedCallback())
        if (!dynamic_cast<FenceCallback const*>(callback) &&
            !isIdle(dynamic_cast<osg::Camera::DrawCallback const*>(callback)))
            return true;
    return false;
}

void ViewerWindow::readPicture(double time, bool fresh, unsigned char* rgb) {
    if (fresh)
        handleEvents(time);
    if (!open())
        throw std::runtime_error("the window is closed: there is no picture");
    requireOwner();
    // What a display shows may lie under other windows, and is exchanged: it is drawn anew.
    if (fresh || !m_viewIsCurrent || !offscreen()) {
        osg::ref_ptr<ReadCallback> const callback = new ReadCallback(m_reader, rgb);
        m_viewer->begin();
        drawWithCallback(callback, fresh ? Pass::EVERYTHING : Pass::VIEW);
        return;
    }
    hyxPython::NativeWork const work;
    if (!m_window->makeCurrent())
        throw std::runtime_error("the window cannot be read: its context is taken");
    m_window->getState()->get<osg::GLExtensions>()->glBindFramebuffer(GL_FRAMEBUFFER_EXT, m_window->getDefaultFboId());
    glReadBuffer(camera()->getReadBuffer());
    m_reader.read(*camera()->getViewport(), *m_window->getState(), rgb);
}

osg::ref_ptr<osg::Image> ViewerWindow::grab(double time) {
    handleEvents(time);
    if (!open())
        throw std::runtime_error("the window is closed: there is no picture");
    osg::ref_ptr<osg::Image> image = new osg::Image;
    osg::ref_ptr<GrabCallback> callback = new GrabCallback(image);
    drawWithCallback(callback, Pass::EVERYTHING);
    return image;
}

bool ViewerWindow::setRectangle(int x, int y, int width, int height) {
    if (!open())
        return false;
    auto const* traits = m_window->getTraits();
    int const oldWidth = traits->width, oldHeight = traits->height;
    m_window->setWindowRectangle(x, y, width, height);
    bool const followed = traits->width == width && traits->height == height;
    // The display's own notice comes too late: the library takes it for old news, and would go on measuring the pointer
    // in the old window.
    if (followed && !offscreen())
        m_window->getEventQueue()->windowResize(x, y, width, height);
    return followed || (oldWidth == width && oldHeight == height);
}

} // namespace hyxOSG
