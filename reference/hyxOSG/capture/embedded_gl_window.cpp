// The viewer that draws into the context of a host.

#include "platform/hyxOSG/capture/embedded_gl_window.h"

#include "platform/hyxOSG/decoration/scene_decorator.h"
#include "platform/hyxOSG/nodes/geometry_node.h"
#include "platform/hyxOSG/visuals/create_visual.h"
#include "platform/hyxSDK/simulation.h"
#include "reference/hyxOSG/capture/embedded_events.h"
#include "reference/hyxOSG/capture/host_context.h"
#include "reference/machinery/meshes/conversions.h"
#include "reference/machinery/shading/shading_marks.h"
#include "reference/machinery/viewing/drawing_failure.h"
#include "reference/machinery/viewing/follow_manipulator.h"
#include "reference/machinery/viewing/processors.h"
#include "reference/machinery/viewing/wheel_zoom.h"

#include <osg/GLObjects>
#include <osg/PolygonMode>
#include <osgGA/OrbitManipulator>
#include <osgViewer/Viewer>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <stdexcept>

namespace hyxOSG {
namespace {

constexpr double fieldOfView = 45;
/// What a wheel reports for one notch, in the toolkits that count eighths of a degree.
constexpr int wheelNotch = 120;

osg::ref_ptr<osgGA::OrbitManipulator> createFreeCamera() {
    osg::ref_ptr<osgGA::OrbitManipulator> manipulator = new osgGA::OrbitManipulator;
    manipulator->setAllowThrow(false);
    manipulator->setVerticalAxisFixed(true);
    boundZoom(*manipulator);
    manipulator->setAutoComputeHomePosition(false);
    manipulator->setHomePosition(osg::Vec3d(6, -9, 5), osg::Vec3d(0, 0, 0), osg::Z_AXIS);
    return manipulator;
}

/// A host that composes its windows takes the alpha of their buffers for transparency, and smooth edges leave less than
/// one there.
void makeOpaque(osg::Viewport const& viewport) {
    glEnable(GL_SCISSOR_TEST);
    glScissor(int(viewport.x()), int(viewport.y()), int(viewport.width()), int(viewport.height()));
    glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_TRUE);
    glClearColor(0, 0, 0, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glDisable(GL_SCISSOR_TEST);
}

} // namespace

struct EmbeddedGLWindow::Implementation {
    Implementation();
    ~Implementation();

    void enterContext(void* current, int x, int y, int width, int height);
    void leaveContext();
    void setRectangle(int x, int y, int width, int height);
    void requireWindow() const;
    osgGA::EventQueue& queue() const;

    osg::ref_ptr<osgViewer::Viewer> viewer = new osgViewer::Viewer;
    osg::ref_ptr<osgViewer::GraphicsWindowEmbedded> window;
    void* context = nullptr;
    osg::ref_ptr<SceneDecorator> decorator;
    osg::ref_ptr<osg::Group> content = new osg::Group;
    osg::ref_ptr<osg::Group> visuals = new osg::Group;
    osg::ref_ptr<EmbeddedEvents> events;
    osg::ref_ptr<osgGA::OrbitManipulator> freeCamera = createFreeCamera();
    osg::ref_ptr<osg::PolygonMode> polygonMode = new osg::PolygonMode;
    int width = 0;
    int height = 0;
};

EmbeddedGLWindow::Implementation::Implementation()
    : decorator(new SceneDecorator(640, 480)), events(new EmbeddedEvents(viewer, decorator->getNonShadowedScene())) {
    content->setName("EmbeddedGLWindow root");
    content->setNodeMask(MAIN_SCENE_MASK | decorator::shadowMasks);
    content->addChild(visuals);
    content->getOrCreateStateSet()->setAttributeAndModes(polygonMode);
    decorator->addChild(content);
    decorator->getHud()->setNodeMask(HUD_MASK);
    keepProcessors(*viewer);
    viewer->setThreadingModel(osgViewer::Viewer::SingleThreaded);
    viewer->setKeyEventSetsDone(0);
    viewer->setLightingMode(osg::View::NO_LIGHT);
    viewer->getCamera()->setClearMask(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT);
    viewer->setSceneData(decorator);
    viewer->setCameraManipulator(freeCamera);
    viewer->addEventHandler(events);
}

EmbeddedGLWindow::Implementation::~Implementation() {
    if (window)
        leaveContext();
}

void EmbeddedGLWindow::Implementation::enterContext(void* current, int x, int y, int newWidth, int newHeight) {
    context = current;
    window = viewer->setUpViewerAsEmbeddedInWindow(x, y, newWidth, newHeight);
    viewer->getCamera()->setProjectionMatrixAsPerspective(fieldOfView, double(newWidth) / newHeight, 0.1, 1000);
    setRectangle(x, y, newWidth, newHeight);
    viewer->realize();
    // While the context is current: a window that ends without a frame would look its functions up in none, and the
    // next window to get the same number would call what it found.
    window->getState()->initializeExtensionProcs();
}

/// Deletes what lies in the host's context if that is the current one. Otherwise its names may mean other objects, so
/// they are only forgotten; they end with the context.
void EmbeddedGLWindow::Implementation::leaveContext() {
    osg::State* const state = window->getState();
    viewer->getCamera()->releaseGLObjects(state);
    if (context && currentContext() == context)
        osg::flushAllDeletedGLObjects(state->getContextID());
    else
        osg::discardAllGLObjects(state->getContextID());
}

/// osg takes the corner for the window's place on the screen and draws from (0, 0).
void EmbeddedGLWindow::Implementation::setRectangle(int x, int y, int newWidth, int newHeight) {
    width = newWidth;
    height = newHeight;
    viewer->getCamera()->setViewport(x, y, width, height);
    window->getEventQueue()->getCurrentEventState()->setWindowRectangle(x, y, width, height);
    decorator->updateWindowSize(width, height);
}

void EmbeddedGLWindow::Implementation::requireWindow() const {
    if (!window) {
        throw std::runtime_error("the embedded window is not set up: call init with the host's context current");
    }
}

osgGA::EventQueue& EmbeddedGLWindow::Implementation::queue() const {
    requireWindow();
    return *window->getEventQueue();
}

EmbeddedGLWindow::EmbeddedGLWindow() : m_implementation(std::make_unique<Implementation>()) {}

EmbeddedGLWindow::~EmbeddedGLWindow() = default;

bool EmbeddedGLWindow::init(int x, int y, int width, int height) {
    Implementation& own = *m_implementation;
    void* const current = currentContext();
    bool const first = !own.window;
    if (width < 1 || height < 1 || (!first && (!current || current == own.context)))
        return false;
    if (!current)
        throw std::runtime_error("there is no OpenGL context: make the host's current before init");
    requireSuitableContext();
    if (!first)
        own.leaveContext();
    own.enterContext(current, x, y, width, height);
    if (first)
        own.viewer->home();
    return true;
}

void EmbeddedGLWindow::resize(int x, int y, int width, int height) {
    m_implementation->requireWindow();
    if (width < 1 || height < 1) {
        return;
    }
    m_implementation->queue().windowResize(x, y, width, height);
    m_implementation->window->resized(x, y, width, height);
    m_implementation->setRectangle(x, y, width, height);
}

void EmbeddedGLWindow::frame() {
    m_implementation->requireWindow();
    if (currentContext() != m_implementation->context) {
        throw std::runtime_error(
            "another OpenGL context than the one of init is current: make the host's current before frame");
    }
    GLint frameBuffer = 0;
    glGetIntegerv(GL_FRAMEBUFFER_BINDING, &frameBuffer);
    m_implementation->window->setDefaultFboId(GLuint(frameBuffer));
    {
        ContextStay const stay(*m_implementation->window->getState());
        m_implementation->viewer->frame();
    }
    makeOpaque(*m_implementation->viewer->getCamera()->getViewport());
    DrawingFailure::raise();
}

void EmbeddedGLWindow::clear() {
    removeSimulation();
    m_implementation->content->removeChildren(0, m_implementation->content->getNumChildren());
    m_implementation->content->addChild(m_implementation->visuals);
}

int EmbeddedGLWindow::getWidth() const {
    return m_implementation->width;
}

int EmbeddedGLWindow::getHeight() const {
    return m_implementation->height;
}

void EmbeddedGLWindow::mouseMoveEvent(int x, int y) {
    m_implementation->queue().mouseMotion(float(x), float(y));
}

void EmbeddedGLWindow::mousePressEvent(int x, int y, int button) {
    m_implementation->queue().mouseButtonPress(float(x), float(y), unsigned(button));
}

void EmbeddedGLWindow::mouseReleaseEvent(int x, int y, int button) {
    m_implementation->queue().mouseButtonRelease(float(x), float(y), unsigned(button));
}

void EmbeddedGLWindow::keyPressEvent(int key, int modifiers) {
    m_implementation->queue().getCurrentEventState()->setModKeyMask(modifiers);
    m_implementation->queue().keyPress(key);
}

void EmbeddedGLWindow::keyReleaseEvent(int key, int modifiers) {
    m_implementation->queue().getCurrentEventState()->setModKeyMask(modifiers);
    m_implementation->queue().keyRelease(key);
}

void EmbeddedGLWindow::wheelEvent(int delta) {
    auto const direction = delta > 0 ? osgGA::GUIEventAdapter::SCROLL_UP : osgGA::GUIEventAdapter::SCROLL_DOWN;
    int const steps = delta == 0 ? 0 : std::max(1, std::abs(delta) / wheelNotch);
    for (int i = 0; i < steps; ++i) {
        m_implementation->queue().mouseScroll(direction);
    }
}

osgGA::EventQueue* EmbeddedGLWindow::getEventQueue() const {
    return m_implementation->window ? m_implementation->window->getEventQueue() : nullptr;
}

void EmbeddedGLWindow::setSimulation(hyxSDK::Simulation* simulation) {
    removeSimulation();
    m_implementation->events->setSimulation(simulation);
    createVisual(simulation, m_implementation->visuals);
}

hyxSDK::Simulation* EmbeddedGLWindow::getSimulation() const {
    return m_implementation->events->simulation();
}

void EmbeddedGLWindow::removeSimulation() {
    m_implementation->visuals->removeChildren(0, m_implementation->visuals->getNumChildren());
    m_implementation->events->setSimulation(nullptr);
}

osg::Group const* EmbeddedGLWindow::getRoot() const {
    return m_implementation->content.get();
}

osg::Group* EmbeddedGLWindow::getRoot() {
    return m_implementation->content.get();
}

osg::Camera const* EmbeddedGLWindow::getCamera() const {
    return m_implementation->viewer->getCamera();
}

osg::Camera* EmbeddedGLWindow::getCamera() {
    return m_implementation->viewer->getCamera();
}

SceneDecorator* EmbeddedGLWindow::getSceneDecorator() const {
    return m_implementation->decorator.get();
}

void EmbeddedGLWindow::fitSceneIntoView() {
    osg::BoundingSphere const sphere = m_implementation->content->getBound();
    if (!sphere.valid()) {
        return;
    }
    // The narrower of the two opening angles decides.
    double vertical = fieldOfView;
    double aspect = 1;
    double zNear = 0;
    double zFar = 0;
    m_implementation->viewer->getCamera()->getProjectionMatrixAsPerspective(vertical, aspect, zNear, zFar);
    double const halfAngle = std::atan(std::tan(osg::DegreesToRadians(vertical / 2)) * std::min(1.0, aspect));
    m_implementation->viewer->setCameraManipulator(m_implementation->freeCamera, false);
    m_implementation->freeCamera->setCenter(sphere.center());
    m_implementation->freeCamera->setDistance(std::max(0.01, sphere.radius() / std::sin(halfAngle)));
}

float EmbeddedGLWindow::getSceneRadius(osg::Group* group) const {
    osg::BoundingSphere const sphere = (group ? group : m_implementation->content.get())->getBound();
    return sphere.valid() ? float(sphere.radius()) : 0.0f;
}

void EmbeddedGLWindow::setOrbitCamera(GeometryNode* node, hyx::Vec3 const& eye) {
    if (!node) {
        m_implementation->freeCamera->setByInverseMatrix(m_implementation->viewer->getCamera()->getViewMatrix());
        m_implementation->viewer->setCameraManipulator(m_implementation->freeCamera, false);
        return;
    }
    osg::Vec3d const offset = toOsg(eye);
    if (!(offset.length() > 0) || !std::isfinite(offset.length())) {
        throw std::invalid_argument("the camera needs a place away from the middle of what it follows");
    }
    bool const vertical = (offset ^ osg::Z_AXIS).length() < 1e-6 * offset.length();
    osg::Vec3d const up = vertical ? osg::Y_AXIS : osg::Z_AXIS;
    osg::ref_ptr<FollowManipulator> const follower = new FollowManipulator(node, FollowManipulator::POSITION);
    follower->setAllowThrow(false);
    boundZoom(*follower);
    follower->setAutoComputeHomePosition(false);
    follower->setHomePosition(offset, osg::Vec3d(0, 0, 0), up);
    follower->setTransformation(offset, osg::Vec3d(0, 0, 0), up);
    m_implementation->viewer->setCameraManipulator(follower, false);
}

void EmbeddedGLWindow::setPolygonMode(int mode) {
    if (mode != osg::PolygonMode::POINT && mode != osg::PolygonMode::LINE && mode != osg::PolygonMode::FILL) {
        throw std::invalid_argument("the polygon mode must be 0x1B00 (points), 0x1B01 (lines) or 0x1B02 (filled)");
    }
    m_implementation->polygonMode->setMode(osg::PolygonMode::FRONT_AND_BACK, osg::PolygonMode::Mode(mode));
}

int EmbeddedGLWindow::getPolygonMode() const {
    return int(m_implementation->polygonMode->getMode(osg::PolygonMode::FRONT_AND_BACK));
}

} // namespace hyxOSG
