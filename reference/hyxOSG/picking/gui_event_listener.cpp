// Answers what is under the pointer.
#include "platform/hyxOSG/picking/gui_event_listener.h"

#include "platform/hyxOSG/visuals/camera_functions.h"
#include "reference/hyxOSG/picking/ray_pick.h"
#include "reference/machinery/meshes/conversions.h"
#include "reference/machinery/viewing/simulation_scene.h"

#include <osg/Camera>

#include <limits>

namespace hyxOSG {

GuiEventListener::GuiEventListener(hyxSDK::GuiEventListener::ActivationMask mask) : hyxSDK::GuiEventListener(mask) {}

GuiEventListener::~GuiEventListener() = default;

hyxSDK::PickResult GuiEventListener::intersect(float x, float y, osg::Camera const* camera, bool all) {
    if (camera) {
        m_eye = toSimulation(getSimulation(), toHyx(camera->getInverseViewMatrix().getTrans()));
    }
    return input::pickUnder(getSimulation(), camera, x, y, all);
}

size_t GuiEventListener::findIntersectGeometryIndex(hyxCollide::LocalGeometryContactVector const& contacts) {
    size_t nearest = contacts.size();
    double shortest = std::numeric_limits<double>::infinity();
    for (size_t i = 0; i < contacts.size(); ++i) {
        if (contacts[i].getNumPoints() == 0)
            continue;
        hyx::Vec3 const way = contacts[i].getPoint(0).point - m_eye;
        if (double const distance = way.dot(way); distance < shortest) {
            shortest = distance;
            nearest = i;
        }
    }
    return nearest;
}

void GuiEventListener::getNearFarPoints(osg::Camera const* camera, hyx::Vec3& nearPoint, hyx::Vec3& farPoint, float x,
                                        float y) {
    if (!camera || !camera->getViewport())
        return;
    hyxOSG::getNearFarPoints(camera, x, y, nearPoint, farPoint);
    nearPoint = toSimulation(getSimulation(), nearPoint);
    farPoint = toSimulation(getSimulation(), farPoint);
}

} // namespace hyxOSG
