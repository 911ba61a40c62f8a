// The application's window and what is drawn in it.
#include "reference/hyxOSG/application/application_implementation.h"
#include "reference/hyxOSG/application/window_events.h"
#include "reference/machinery/context/picture_size.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <utility>

namespace hyxOSG {

void ExampleApplication::initViewer(int width, int height, bool offscreen) {
    WindowRequest request = m_implementation->windowRequest;
    request.width = width;
    request.height = height;
    if (offscreen)
        request.kind = WindowKind::OFFSCREEN;
    m_implementation->openWindow(request);
    setupViewer();
}

void ExampleApplication::Implementation::openWindow(WindowRequest const& request) {
    // The new window is made first: when that fails the old one stays.
    auto next = std::make_shared<ViewerWindow>(request, graph.root());
    if (window) // only what lies in its context: other applications draw with the same programs
        graph.root()->releaseGLObjects(window->window()->getState());
    window = std::move(next);
    drops = window->offscreen() ? nullptr : std::make_unique<FileDrops>(nativeWindow(window->window()));
    windowRequest = request;
    // A window that covers the screen has the screen's size.
    windowRequest.width = window->window()->getTraits()->width;
    windowRequest.height = window->window()->getTraits()->height;
    graph.decorator()->updateWindowSize(windowRequest.width, windowRequest.height);
    if (imageCapture)
        window->camera()->addFinalDrawCallback(imageCapture->getDrawCallback());
    if (videoCapture)
        window->camera()->addFinalDrawCallback(videoCapture->getDrawCallback());
    if (std::exchange(filmWaits, false)) {
        videoCapture->setImageResolution(windowRequest.width, windowRequest.height);
        videoCapture->startCapture();
    }
    if (!realTimeSyncSet)
        pacer.setRealTimeSync(!window->offscreen());
}

void ExampleApplication::Implementation::handleEvents(ExampleApplication& application) {
    auto const shown = window;
    shown->handleEvents(simulation->getTimeStamp());
    for (std::string const& file : drops ? drops->take() : std::vector<std::string>())
        if (std::filesystem::exists(file)) // it may be gone by now
            application.showFile(file);
}

void ExampleApplication::setupViewer(bool manipulator, bool pickHandler) {
    initGraphics();
    osgViewer::Viewer* viewer = m_implementation->window->viewer();
    osgGA::CameraManipulator* chosen =
        m_implementation->follow ? m_implementation->follow.get() : m_implementation->orbit.get();
    m_implementation->useManipulator(manipulator ? chosen : nullptr);
    // A listener may ask for this while the viewer goes through its handlers.
    if (auto const& handlers = viewer->getEventHandlers();
        std::find(handlers.begin(), handlers.end(), m_implementation->eventHandler) == handlers.end()) {
        m_implementation->eventHandler = new WindowEvents(this);
        viewer->addEventHandler(m_implementation->eventHandler);
    }
    m_implementation->pickHandler = pickHandler ? new PickHandler(viewer, m_implementation->graph.root()) : nullptr;
    if (pickHandler)
        m_implementation->pickHandler->setSimulation(&m_implementation->ensureSimulation());
}

void ExampleApplication::initGraphics() {
    if (!m_implementation->window)
        initViewer(m_implementation->windowRequest.width, m_implementation->windowRequest.height);
}

std::shared_ptr<ViewerWindow> ExampleApplication::Implementation::ensureWindow(ExampleApplication& application) {
    application.initGraphics();
    return window;
}

PickHandler* ExampleApplication::getPickHandler() {
    return m_implementation->pickHandler.get();
}

PickHandler const* ExampleApplication::getPickHandler() const {
    return m_implementation->pickHandler.get();
}

bool ExampleApplication::setWindowRectangle(unsigned int x, unsigned int y, unsigned int width, unsigned int height) {
    if (!m_implementation->window || !isPictureSize(width, height) || x > largestSide || y > largestSide)
        return false;
    auto const* traits = m_implementation->window->window()->getTraits();
    bool const resizes = int(width) != traits->width || int(height) != traits->height;
    if (resizes && !m_implementation->windowRequest.resizable)
        return false;
    if (!m_implementation->window->setRectangle(x, y, width, height))
        return false;
    m_implementation->graph.decorator()->updateWindowSize(width, height);
    return true;
}

bool ExampleApplication::setWindowTitle(std::string const& title) {
    m_implementation->windowRequest.title = title;
    if (!m_implementation->window)
        return false;
    m_implementation->window->window()->setWindowName(title);
    return true;
}

void ExampleApplication::setAllowWindowResizing(bool allow) {
    m_implementation->windowRequest.resizable = allow;
}

bool ExampleApplication::getAllowWindowResizing() const {
    return m_implementation->windowRequest.resizable;
}

bool ExampleApplication::hasOffscreenWindow() const {
    return m_implementation->window && m_implementation->window->offscreen();
}

hyx::UInt ExampleApplication::getHWND() const {
    return m_implementation->window ? nativeWindow(m_implementation->window->window()) : 0;
}

void ExampleApplication::setEnableVSync(bool enable, bool applyNow) {
    m_implementation->windowRequest.vsync = enable;
    if (applyNow && m_implementation->window)
        m_implementation->window->window()->setSyncToVBlank(enable);
}

bool ExampleApplication::getEnableVSync() const {
    return m_implementation->windowRequest.vsync;
}

void ExampleApplication::setNumSamples(int samples) {
    if (samples < 0 || samples > 16)
        throw std::invalid_argument("a window takes 0 to 16 samples a pixel, not " + std::to_string(samples));
    m_implementation->windowRequest.samples = samples > 1 ? samples : 0;
}

int ExampleApplication::getNumSamples() const {
    return m_implementation->window ? m_implementation->window->samples() : m_implementation->windowRequest.samples;
}

bool ExampleApplication::setEnableDebugRenderer(bool enable) {
    m_implementation->debug.setEnable(enable);
    return m_implementation->debug.enabled();
}

bool ExampleApplication::getEnableDebugRenderer() const {
    return m_implementation->debug.enabled();
}

void ExampleApplication::setEnableTextDebugRendering(bool enable) {
    m_implementation->debug.setText(enable);
}

bool ExampleApplication::getEnableTextDebugRendering() const {
    return m_implementation->debug.text();
}

void ExampleApplication::setEnableOSGRenderer(bool enable) {
    m_implementation->osgRenderer = enable;
    if (enable)
        m_implementation->graph.sceneSwitch()->setAllChildrenOn();
    else
        m_implementation->graph.sceneSwitch()->setAllChildrenOff();
}

bool ExampleApplication::getEnableOSGRenderer() const {
    return m_implementation->osgRenderer;
}

} // namespace hyxOSG
