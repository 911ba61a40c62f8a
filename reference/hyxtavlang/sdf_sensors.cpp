// Lights and sensors of SDF files.
#include "platform/hyxtavlang/model_looks.h"
#include "platform/hyxtavlang/model_sensors.h"
#include "reference/hyxtavlang/sdf_context.h"

#include <cmath>

namespace hyxtavlang {
namespace {

template <class Made>
std::shared_ptr<Made> place(SdfContext& context, sdf::Sensor const& sensor, SdfContext::BodyPtr const& body,
                            std::string const& prefix) {
    auto const made = std::make_shared<Made>();
    made->name = prefix + sensor.Name();
    made->line = SdfContext::lineOf(sensor.Element());
    made->body = body;
    made->transform = context.place(sensor.SemanticPose());
    context.tree->children.push_back(made);
    return made;
}

/// Cameras look along X there, Z up.
void readCamera(SdfContext& context, sdf::Sensor const& sensor, SdfContext::BodyPtr const& body,
                std::string const& prefix) {
    sdf::Camera const& camera = *sensor.CameraSensor();
    auto const made = place<tavlang::Visuals::Camera>(context, sensor, body, prefix);
    hyx::AffineMatrix4x4 ahead;
    double const rows[3][3] = {{0, -1, 0}, {0, 0, 1}, {-1, 0, 0}};
    for (unsigned i = 0; i < 3; ++i)
        for (unsigned j = 0; j < 3; ++j)
            ahead(i, j) = rows[i][j];
    made->transform = ahead * made->transform;
    made->width = camera.ImageWidth();
    made->height = camera.ImageHeight();
    double const angle = camera.HorizontalFov().Radian();
    if (!made->width || !made->height || !(angle > 0 && angle < M_PI))
        context.fail(sensor.Element(), "the camera '" + sensor.Name() +
                                           "' has no picture; expected pixels and an angle between 0 and pi");
    made->verticalAngle = 2 * std::atan(std::tan(angle / 2) * made->height / made->width);
    made->near = camera.NearClip();
    made->far = camera.FarClip();
    if (!(made->near > 0 && made->near < made->far))
        context.fail(sensor.Element(), "the camera '" + sensor.Name() + "' needs a <clip> with 0 < near < far");
}

void readLidar(SdfContext& context, sdf::Sensor const& sensor, SdfContext::BodyPtr const& body,
               std::string const& prefix) {
    sdf::Lidar const& lidar = *sensor.LidarSensor();
    double const left = lidar.HorizontalScanMaxAngle().Radian(), right = lidar.HorizontalScanMinAngle().Radian();
    double const top = lidar.VerticalScanMaxAngle().Radian(), bottom = lidar.VerticalScanMinAngle().Radian();
    auto const made = place<tavlang::Sensors::Lidar>(context, sensor, body, prefix);
    made->columns = lidar.HorizontalScanSamples();
    made->rows = std::max(1u, lidar.VerticalScanSamples());
    made->horizontalAngle = left - right;
    made->verticalAngle = top - bottom;
    if (!made->columns || !(made->horizontalAngle >= 0) || !(made->verticalAngle >= 0))
        context.fail(sensor.Element(),
                     "the lidar '" + sensor.Name() + "' has no rays; expected samples, and angles from min to max");
    made->transform = hyx::AffineMatrix4x4::rotate(hyx::Quat((left + right) / 2, hyx::Vec3(0, 0, 1))) * made->transform;
    if (made->rows > 1 && std::abs(top + bottom) > 1e-9)
        context.remark("the middle height of the rays of a lidar", sensor.Element());
    made->nearest = lidar.RangeMin();
    made->farthest = lidar.RangeMax();
    if (!(made->nearest >= 0 && made->nearest < made->farthest))
        context.fail(sensor.Element(), "the lidar '" + sensor.Name() + "' needs a <range> with 0 <= min < max");
    made->rate = sensor.UpdateRate();
    if (lidar.LidarNoise().Type() != sdf::NoiseType::NONE)
        made->deviation = lidar.LidarNoise().StdDev();
}

} // namespace

void readSdfLight(SdfContext& context, sdf::Light const& light, SdfContext::BodyPtr const& body,
                  std::string const& prefix) {
    auto const made = std::make_shared<tavlang::Visuals::Light>();
    hyx::AffineMatrix4x4 const place = context.place(light.SemanticPose());
    made->name = prefix + light.Name();
    made->line = SdfContext::lineOf(light.Element());
    made->body = body;
    made->position = place.getTranslate();
    made->direction = place.transformVector(SdfContext::vector(light.Direction()));
    made->color = SdfContext::color(light.Diffuse());
    made->specular = SdfContext::color(light.Specular());
    made->directional = light.Type() == sdf::LightType::DIRECTIONAL;
    made->castsShadows = light.CastShadows();
    if (light.Type() == sdf::LightType::SPOT) {
        made->spotAngle = light.SpotOuterAngle().Radian() / 2;
        made->spotExponent = light.SpotFalloff();
    }
    if (light.Element()->HasElement("attenuation"))
        made->attenuation = {light.ConstantAttenuationFactor(), light.LinearAttenuationFactor(),
                             light.QuadraticAttenuationFactor()};
    for (unsigned part = 0; part < 3; ++part)
        made->color[part] *= static_cast<float>(light.Intensity());
    context.tree->children.push_back(made);
}

void readSdfSensor(SdfContext& context, sdf::Sensor const& sensor, SdfContext::BodyPtr const& body,
                   std::string const& prefix) {
    if (sensor.CameraSensor())
        readCamera(context, sensor, body, prefix);
    else if (sensor.LidarSensor())
        readLidar(context, sensor, body, prefix);
    else if (sensor.Type() == sdf::SensorType::IMU)
        place<tavlang::Sensors::Imu>(context, sensor, body, prefix)->rate = sensor.UpdateRate();
    else
        context.remark("a sensor of the type " + sensor.TypeStr(), sensor.Element());
}

} // namespace hyxtavlang
