/// The application's window and what is drawn in it.
#include "reference/hyxOSG/application/application_state.h"
#include "reference/hyxOSG/application/window_events.h"

#include <algorithm>
#include <stdexcept>

namespace hyxOSG {

void ExampleApplication::initViewer(int width, int height, bool offscreen) {
    WindowRequest request = m_state->windowRequest;
    request.width = width;
    request.height = height;
    if (offscreen)
        request.kind = WindowKind::OFFSCREEN;
    m_state->openWindow(request);
    setupViewer();
}

void ExampleApplication::State::openWindow(WindowRequest const& request) {
    // The new window is made first: when that fails the old one stays.
    auto next = std::make_shared<ViewerWindow>(request, graph.root());
    graph.root()->releaseGLObjects();
    window = std::move(next);
    windowRequest = request;
    graph.decorator()->updateWindowSize(request.width, request.height);
    if (imageCapture)
        window->camera()->addFinalDrawCallback(imageCapture->getDrawCallback());
    if (videoCapture)
        window->camera()->addFinalDrawCallback(videoCapture->getDrawCallback());
    if (!realTimeSyncSet)
        pacer.setRealTimeSync(!window->offscreen());
}

void ExampleApplication::setupViewer(bool manipulator, bool pickHandler) {
    initGraphics();
    osgViewer::Viewer* viewer = m_state->window->viewer();
    osgGA::CameraManipulator* chosen = m_state->follow ? m_state->follow.get() : m_state->orbit.get();
    m_state->useManipulator(manipulator ? chosen : nullptr);
    // A listener may ask for this while the viewer goes through its handlers.
    if (auto const& handlers = viewer->getEventHandlers();
        std::find(handlers.begin(), handlers.end(), m_state->eventHandler) == handlers.end()) {
        m_state->eventHandler = new WindowEvents(this);
        viewer->addEventHandler(m_state->eventHandler);
    }
    m_state->pickHandler = pickHandler ? new PickHandler(viewer, m_state->graph.root()) : nullptr;
    if (pickHandler)
        m_state->pickHandler->setSimulation(&m_state->ensureSimulation());
}

void ExampleApplication::initGraphics() {
    if (!m_state->window)
        initViewer(m_state->windowRequest.width, m_state->windowRequest.height);
}

std::shared_ptr<ViewerWindow> ExampleApplication::State::ensureWindow(ExampleApplication& application) {
    application.initGraphics();
    return window;
}

PickHandler* ExampleApplication::getPickHandler() {
    return m_state->pickHandler.get();
}

PickHandler const* ExampleApplication::getPickHandler() const {
    return m_state->pickHandler.get();
}

bool ExampleApplication::setWindowRectangle(unsigned int x, unsigned int y, unsigned int width, unsigned int height) {
    constexpr unsigned int largest = 16384;
    if (!m_state->window || width < 1 || height < 1 || width > largest || height > largest || x > largest ||
        y > largest)
        return false;
    auto const* traits = m_state->window->window()->getTraits();
    bool const resizes = int(width) != traits->width || int(height) != traits->height;
    if (resizes && !m_state->windowRequest.resizable)
        return false;
    if (!m_state->window->setRectangle(x, y, width, height))
        return false;
    m_state->graph.decorator()->updateWindowSize(width, height);
    return true;
}

bool ExampleApplication::setWindowTitle(std::string const& title) {
    m_state->windowRequest.title = title;
    if (!m_state->window)
        return false;
    m_state->window->window()->setWindowName(title);
    return true;
}

void ExampleApplication::setAllowWindowResizing(bool allow) {
    m_state->windowRequest.resizable = allow;
}

bool ExampleApplication::getAllowWindowResizing() const {
    return m_state->windowRequest.resizable;
}

bool ExampleApplication::hasOffscreenWindow() const {
    return m_state->window && m_state->window->offscreen();
}

hyx::UInt ExampleApplication::getHWND() const {
    return m_state->window ? nativeWindow(m_state->window->window()) : 0;
}

void ExampleApplication::setEnableVSync(bool enable, bool applyNow) {
    m_state->windowRequest.vsync = enable;
    if (applyNow && m_state->window)
        m_state->window->window()->setSyncToVBlank(enable);
}

bool ExampleApplication::getEnableVSync() const {
    return m_state->windowRequest.vsync;
}

bool ExampleApplication::setEnableDebugRenderer(bool enable) {
    m_state->debug.setEnable(enable);
    return m_state->debug.enabled();
}

bool ExampleApplication::getEnableDebugRenderer() const {
    return m_state->debug.enabled();
}

void ExampleApplication::setEnableTextDebugRendering(bool enable) {
    m_state->debug.setText(enable);
}

bool ExampleApplication::getEnableTextDebugRendering() const {
    return m_state->debug.text();
}

void ExampleApplication::setEnableOSGRenderer(bool enable) {
    m_state->osgRenderer = enable;
    if (enable)
        m_state->graph.sceneSwitch()->setAllChildrenOn();
    else
        m_state->graph.sceneSwitch()->setAllChildrenOff();
}

bool ExampleApplication::getEnableOSGRenderer() const {
    return m_state->osgRenderer;
}

} // namespace hyxOSG
