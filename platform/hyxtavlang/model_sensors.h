// What a model measures with.
#pragma once

#include "platform/hyxtavlang/model_bodies.h"

namespace tavlang::Sensors {

/// Measures at a place of a body, X ahead and Z up.
class Sensor : public Core::Object {
public:
    std::string getType() const override { return "Sensors.Sensor"; }

    Core::Properties getProperties() const override;

    std::shared_ptr<Physics3D::Body> body; ///< null is the world
    hyx::AffineMatrix4x4 transform;        ///< in the body
    double rate = 0;                       ///< per second; 0 is at every step
};

/// Distances along a fan of rays.
class Lidar : public Sensor {
public:
    std::string getType() const override { return "Sensors.Lidar"; }

    Core::Properties getProperties() const override;

    unsigned rows = 1;
    unsigned columns = 1;
    double horizontalAngle = 0; ///< radians, as much to the left as to the right
    double verticalAngle = 0;   ///< as much upwards as downwards
    double nearest = 0;         ///< metres
    double farthest = 0;
    double deviation = 0; ///< of the distances, metres
};

/// Turning speeds and accelerations.
class Imu : public Sensor {
public:
    std::string getType() const override { return "Sensors.Imu"; }
};

} // namespace tavlang::Sensors
