// The off-screen window's life: context, surface, resize, close.
#include "reference/machinery/context/egl_window.h"

#include "reference/machinery/context/egl_display.h"

#include <stdexcept>

namespace hyxOSG {
namespace {

EGLContext sharedContext(osg::GraphicsContext* context, EGLContext (*read)(EglWindow*)) {
    auto* window = dynamic_cast<EglWindow*>(context);
    return window ? read(window) : EGL_NO_CONTEXT;
}

} // namespace

EglWindow::EglWindow(osg::GraphicsContext::Traits* traits) : m_width(traits->width), m_height(traits->height) {
    _traits = traits;
    EglLibrary const& egl = EglLibrary::instance();
    m_display = eglDisplay();
    m_config = chooseEglConfig(m_display, traits->stencil > 0);
    if (!m_config || !egl.bindApi(EGL_OPENGL_API))
        throw std::runtime_error("no pixel format for an off-screen window");

    EGLContext const shared =
        sharedContext(traits->sharedContext.get(), [](EglWindow* window) { return window->m_context; });
    m_context = egl.createContext(m_display, m_config, shared, nullptr);
    if (m_context == EGL_NO_CONTEXT)
        throw std::runtime_error("no context for an off-screen window: " + eglErrorText(egl.getError()));
    m_surface = makeSurface(traits->width, traits->height);
    if (m_surface == EGL_NO_SURFACE) {
        std::string const reason = eglErrorText(egl.getError());
        egl.destroyContext(m_display, m_context);
        m_context = EGL_NO_CONTEXT;
        throw std::runtime_error("no off-screen window of this size: " + reason);
    }
    m_valid = true;

    setState(new osg::State);
    getState()->setGraphicsContext(this);
    if (shared != EGL_NO_CONTEXT) {
        getState()->setContextID(traits->sharedContext->getState()->getContextID());
        incrementContextIDUsageCount(getState()->getContextID());
    } else {
        getState()->setContextID(osg::GraphicsContext::createNewContextID());
    }
    getEventQueue()->syncWindowRectangleWithGraphicsContext();
}

EglWindow::~EglWindow() {
    close(true);
}

EGLSurface EglWindow::makeSurface(int width, int height) const {
    EGLint const size[] = {EGL_WIDTH, width, EGL_HEIGHT, height, EGL_NONE};
    return EglLibrary::instance().createPbuffer(m_display, m_config, size);
}

bool EglWindow::realizeImplementation() {
    if (m_valid && !m_realized && _traits->samples > 0)
        makeFrame();
    m_realized = m_valid;
    return m_realized;
}

void EglWindow::makeFrame() {
    if (!bind(m_surface))
        return;
    if (hasSampledFrames(*getState())) {
        m_frame = std::make_unique<SampledFrame>(*getState(), _traits->samples, _traits->alpha > 0, m_width, m_height);
        setDefaultFboId(m_frame->id());
    }
    EglLibrary::instance().makeCurrent(m_display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
}

bool EglWindow::bind(EGLSurface read) {
    EglLibrary const& egl = EglLibrary::instance();
    egl.bindApi(EGL_OPENGL_API);
    if (!egl.makeCurrent(m_display, m_surface, read, m_context))
        return false;
    if (m_frame) {
        m_frame->resize(m_width, m_height);
        m_frame->bind();
    }
    return true;
}

void EglWindow::closeImplementation() {
    EglLibrary const& egl = EglLibrary::instance();
    if (m_frame && !bind(m_surface))
        static_cast<void>(m_frame.release()); // it went with the context
    m_frame.reset();
    setDefaultFboId(0);
    if (m_context != EGL_NO_CONTEXT && egl.currentContext() == m_context)
        egl.makeCurrent(m_display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    if (m_surface != EGL_NO_SURFACE)
        egl.destroySurface(m_display, m_surface);
    if (m_context != EGL_NO_CONTEXT)
        egl.destroyContext(m_display, m_context);
    m_surface = EGL_NO_SURFACE;
    m_context = EGL_NO_CONTEXT;
    m_valid = m_realized = false;
}

// Binding nothing succeeds in EGL, and the caller would then read GL strings of no context; so a window that is
// not realized refuses.
bool EglWindow::makeCurrentImplementation() {
    return m_realized && bind(m_surface);
}

bool EglWindow::makeContextCurrentImplementation(osg::GraphicsContext* readContext) {
    auto* reader = dynamic_cast<EglWindow*>(readContext);
    return m_realized && reader && reader->m_realized && bind(reader->m_surface);
}

bool EglWindow::releaseContextImplementation() {
    if (!m_realized)
        return false;
    return EglLibrary::instance().makeCurrent(m_display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
}

// There is nothing to swap; the commands must only be on their way before the next frame's.
void EglWindow::swapBuffersImplementation() {
    glFlush();
}

// A pixel buffer keeps its size, so a new one takes its place. The traits stay as they are: the caller scales the
// viewports by new over old.
bool EglWindow::setWindowRectangleImplementation(int x, int y, int width, int height) {
    if (!m_valid || width < 1 || height < 1)
        return false;
    if (width != m_width || height != m_height) {
        EglLibrary const& egl = EglLibrary::instance();
        EGLSurface const surface = makeSurface(width, height);
        if (surface == EGL_NO_SURFACE)
            return false;
        bool const current = egl.currentContext() == m_context;
        if (current)
            egl.makeCurrent(m_display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
        egl.destroySurface(m_display, m_surface);
        m_surface = surface;
        m_width = width;
        m_height = height;
        if (current)
            bind(m_surface);
    }
    getEventQueue()->windowResize(x, y, width, height);
    return true;
}

} // namespace hyxOSG
