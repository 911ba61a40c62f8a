// Sends rays from the eye into the simulation.
#include "reference/hyxOSG/picking/ray_pick.h"

#include "platform/hyxOSG/visuals/camera_functions.h"
#include "platform/hyxSDK/simulation.h"
#include "reference/machinery/viewing/simulation_scene.h"

#include <osg/Camera>

namespace hyxOSG::input {

hyxSDK::PickResult pickAlong(hyxSDK::Simulation const* simulation, hyx::Vec3 const& from, hyx::Vec3 const& to,
                             bool all) {
    hyxSDK::PickResult result;
    if (!simulation)
        return result;
    hyxCollide::Space const* space = simulation->getSpace();
    if (all) {
        for (hyxCollide::RayHit const& hit : space->castRayAll(from, to))
            result.add(hit.geometry, hit.point, hit.normal, hit.distance);
    } else if (hyxCollide::RayHit const hit = space->castRay(from, to); hit.isValid()) {
        result.add(hit.geometry, hit.point, hit.normal, hit.distance);
    }
    return result;
}

hyxSDK::PickResult pickUnder(hyxSDK::Simulation const* simulation, osg::Camera const* camera, float x, float y,
                             bool all) {
    if (!camera || !camera->getViewport())
        return {};
    hyx::Vec3 nearPoint, farPoint;
    getNearFarPoints(camera, x, y, nearPoint, farPoint);
    return pickAlong(simulation, toSimulation(simulation, nearPoint), toSimulation(simulation, farPoint), all);
}

} // namespace hyxOSG::input
