// Grabs, pulls and releases bodies as mouse and keys say.
#include "platform/hyxOSG/picking/pick_handler.h"

#include "platform/hyxOSG/visuals/camera_functions.h"
#include "platform/hyxSDK/simulation.h"
#include "platform/osg/attachment.h"
#include "reference/hyxOSG/picking/mouse_spring.h"
#include "reference/hyxOSG/picking/ray_pick.h"
#include "reference/machinery/meshes/conversions.h"
#include "reference/machinery/viewing/simulation_scene.h"

#include <osg/Camera>
#include <osg/observer_ptr>
#include <osgGA/GUIEventAdapter>
#include <osgViewer/Viewer>

#include <cmath>
#include <stdexcept>

namespace hyxOSG {
namespace {

using Key = osgGA::GUIEventAdapter;

// The bit that a modifier key itself has in the key mask; 0 for other keys.
unsigned int modifierBit(int key) {
    switch (key) {
    case Key::KEY_Shift_L:
        return Key::MODKEY_LEFT_SHIFT;
    case Key::KEY_Shift_R:
        return Key::MODKEY_RIGHT_SHIFT;
    case Key::KEY_Control_L:
        return Key::MODKEY_LEFT_CTRL;
    case Key::KEY_Control_R:
        return Key::MODKEY_RIGHT_CTRL;
    case Key::KEY_Alt_L:
        return Key::MODKEY_LEFT_ALT;
    case Key::KEY_Alt_R:
        return Key::MODKEY_RIGHT_ALT;
    default:
        return 0;
    }
}

// Where the line through two points meets the plane at right angles to a direction; nothing when it runs along it.
bool meetPlane(hyx::Vec3 const& from, hyx::Vec3 const& to, hyx::Vec3 const& point, hyx::Vec3 const& direction,
               hyx::Vec3& meeting) {
    double const along = direction.dot(to - from);
    if (std::abs(along) < 1e-12)
        return false;
    meeting = from + (to - from) * (direction.dot(point - from) / along);
    return true;
}

} // namespace

struct PickHandler::Implementation {
    osg::observer_ptr<osg::Camera> camera;
    osg::observer_ptr<osg::Group> root;
    hyx::ref_ptr<hyxSDK::Simulation> simulation;
    unsigned int activateKeys = Key::MODKEY_CTRL;
    unsigned int activateButtons = LEFT;
    unsigned int keys = 0;
    input::MouseSpring spring;
    std::unique_ptr<input::SpringPicture> picture;

    void showSpring() {
        if (!picture)
            return;
        if (spring.holds())
            picture->show(toPicture(simulation.get(), spring.heldPoint()),
                          toPicture(simulation.get(), spring.target()));
        else
            picture->hide();
    }

    void removePicture() {
        osg::ref_ptr<osg::Group> group;
        if (picture && root.lock(group))
            group->removeChild(picture->node());
        picture = nullptr;
    }

    void dragTo(float x, float y) {
        if (!camera.valid() || !camera->getViewport())
            return;
        hyx::Vec3 nearPoint, farPoint, target;
        hyxOSG::getNearFarPoints(camera.get(), x, y, nearPoint, farPoint);
        osg::Matrixd const toWorld = camera->getInverseViewMatrix();
        hyx::Vec3 const view = toHyx(osg::Matrixd::transform3x3(osg::Vec3d(0, 0, -1), toWorld));
        if (meetPlane(nearPoint, farPoint, toPicture(simulation.get(), spring.target()), view, target))
            spring.setTarget(toSimulation(simulation.get(), target));
    }
};

PickHandler::PickHandler(osgViewer::Viewer* viewer, osg::Group* root)
    : m_implementation(std::make_unique<Implementation>()) {
    m_implementation->camera = viewer ? viewer->getCamera() : nullptr;
    m_implementation->root = root;
    createMouseSpringRendering(0.03f);
}

PickHandler::~PickHandler() {
    m_implementation->removePicture();
}

void PickHandler::reset() {
    m_implementation->spring.release();
    m_implementation->showSpring();
}

void PickHandler::setActivateModKeyMask(unsigned int mask) {
    m_implementation->activateKeys = mask;
}

unsigned int PickHandler::getActivateModKeyMask() const {
    return m_implementation->activateKeys;
}

void PickHandler::setActivateMouseButton(unsigned int button) {
    m_implementation->activateButtons = button;
}

unsigned int PickHandler::getActivateMouseButton() const {
    return m_implementation->activateButtons;
}

void PickHandler::setSimulation(hyxSDK::Simulation* simulation) {
    if (m_implementation->simulation.get() == simulation)
        return;
    reset();
    m_implementation->simulation = simulation;
}

void PickHandler::setCamera(osg::Camera* camera) {
    m_implementation->camera = camera;
}

osg::Camera* PickHandler::getCamera() {
    return m_implementation->camera.get();
}

void PickHandler::updateRenderState() {
    m_implementation->showSpring();
}

void PickHandler::createMouseSpringRendering(float radius) {
    if (!(radius > 0) || !std::isfinite(radius))
        throw std::invalid_argument("the radius of the drawn spring's ends must be positive and finite");
    m_implementation->removePicture();
    osg::ref_ptr<osg::Group> group;
    if (!m_implementation->root.lock(group))
        return;
    m_implementation->picture = std::make_unique<input::SpringPicture>(radius);
    osg::attach(*group, *m_implementation->picture->node());
    m_implementation->showSpring();
}

hyxSDK::PickResult PickHandler::intersect(hyx::Vec3 const& nearPoint, hyx::Vec3 const& farPoint, bool all) {
    return input::pickAlong(m_implementation->simulation.get(), nearPoint, farPoint, all);
}

hyxSDK::PickResult PickHandler::intersect(float x, float y, bool all) {
    return input::pickUnder(m_implementation->simulation.get(), m_implementation->camera.get(), x, y, all);
}

hyxSDK::PickResult PickHandler::pick(float x, float y) {
    hyxSDK::PickResult const result = intersect(x, y, false);
    m_implementation->spring.attach(result.getRigidBody(), result.getPoint());
    m_implementation->showSpring();
    return result;
}

void PickHandler::getNearFarPoints(osg::Camera const* camera, hyx::Vec3& nearPoint, hyx::Vec3& farPoint, float x,
                                   float y, bool normalized) const {
    osg::Viewport const* viewport = camera ? camera->getViewport() : nullptr;
    if (normalized && viewport) {
        x = static_cast<float>(viewport->x() + (x + 1) / 2 * viewport->width());
        y = static_cast<float>(viewport->y() + (y + 1) / 2 * viewport->height());
    }
    if (!viewport)
        return;
    hyxOSG::getNearFarPoints(camera, x, y, nearPoint, farPoint);
    nearPoint = toSimulation(m_implementation->simulation.get(), nearPoint);
    farPoint = toSimulation(m_implementation->simulation.get(), farPoint);
}

bool PickHandler::keyboard(int key, unsigned int modKeyMask, float, float, bool keydown) {
    unsigned int const own = modifierBit(key);
    m_implementation->keys = keydown ? modKeyMask | own : modKeyMask & ~own;
    return false;
}

bool PickHandler::mouse(hyxSDK::GuiEventListener::MouseButtonMask buttons, hyxSDK::GuiEventListener::MouseState state,
                        float x, float y) {
    if (!(static_cast<unsigned int>(buttons) & m_implementation->activateButtons))
        return false;
    if (state == UP) {
        bool const held = m_implementation->spring.holds();
        reset();
        return held;
    }
    if (m_implementation->activateKeys && !(m_implementation->keys & m_implementation->activateKeys))
        return false;
    pick(x, y);
    return m_implementation->spring.holds();
}

bool PickHandler::mouseDragged(hyxSDK::GuiEventListener::MouseButtonMask, float x, float y) {
    if (!m_implementation->spring.holds())
        return false;
    m_implementation->dragTo(x, y);
    m_implementation->showSpring();
    return true;
}

void PickHandler::update(float x, float y) {
    if (m_implementation->spring.holds())
        m_implementation->dragTo(x, y);
    else
        m_implementation->spring.release();
    m_implementation->showSpring();
}

} // namespace hyxOSG
