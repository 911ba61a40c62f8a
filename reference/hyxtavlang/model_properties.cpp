// What each class of the model tree tells of itself.
#include "platform/hyxtavlang/model_joints.h"
#include "platform/hyxtavlang/model_looks.h"
#include "platform/hyxtavlang/model_sensors.h"

namespace tavlang {

using Core::Properties;

namespace {

std::vector<double> numbers(hyx::Vec3 const& vector) {
    return {vector.x, vector.y, vector.z};
}

std::vector<double> numbers(hyx::Vec4f const& color) {
    return {color[0], color[1], color[2], color[3]};
}

std::vector<double> numbers(hyx::AffineMatrix4x4 const& transform) {
    return {transform.ptr(), transform.ptr() + 16};
}

template <class Object>
std::string nameOf(std::shared_ptr<Object> const& object) {
    return object ? object->name : "";
}

Properties joined(Properties first, Properties const& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

} // namespace

namespace Physics3D {

Properties Material::getProperties() const {
    return {{"friction", friction}, {"restitution", restitution}, {"density", density}};
}

Properties Body::getProperties() const {
    Properties properties{{"transform", numbers(transform)}, {"fixed", fixed}};
    if (kinematic)
        properties.push_back({"kinematic", kinematic});
    if (velocity.length() > 0 || angularVelocity.length() > 0)
        properties =
            joined(properties, {{"velocity", numbers(velocity)}, {"angularVelocity", numbers(angularVelocity)}});
    if (shapesWeigh && mass > 0)
        properties.push_back({"mass", mass});
    else if (hasMass && !shapesWeigh)
        properties = joined(properties, {{"mass", mass},
                                         {"centerOfMass", numbers(centerOfMass)},
                                         {"inertia", std::vector<double>(inertia.begin(), inertia.end())}});
    return properties;
}

Properties CollisionExclusion::getProperties() const {
    return {{"first", nameOf(first)}, {"second", nameOf(second)}};
}

Properties Site::getProperties() const {
    return {{"body", nameOf(body)}, {"transform", numbers(transform)}};
}

Properties CollisionPair::getProperties() const {
    return {{"first", nameOf(first)}, {"second", nameOf(second)}, {"friction", friction}};
}

Properties System::getProperties() const {
    return {{"neighboursCollide", neighboursCollide}};
}

Properties Geometry::getProperties() const {
    return {{"transform", numbers(transform)},
            {"friction", material ? material->friction : Material().friction},
            {"belongsTo", double(belongsTo)},
            {"collidesWith", double(collidesWith)},
            {"sensor", sensor}};
}

namespace Geometries {

Properties Box::getProperties() const {
    return joined({{"halfExtents", numbers(halfExtents)}}, Geometry::getProperties());
}

Properties Sphere::getProperties() const {
    return joined({{"radius", radius}}, Geometry::getProperties());
}

Properties Ellipsoid::getProperties() const {
    return joined({{"radii", numbers(radii)}}, Geometry::getProperties());
}

Properties Cylinder::getProperties() const {
    return joined({{"radius", radius}, {"height", height}}, Geometry::getProperties());
}

Properties Capsule::getProperties() const {
    return joined({{"radius", radius}, {"height", height}}, Geometry::getProperties());
}

Properties Cone::getProperties() const {
    return joined({{"radius", radius}, {"height", height}}, Geometry::getProperties());
}

Properties Plane::getProperties() const {
    return joined({{"halfSizes", std::vector<double>{halfSizes[0], halfSizes[1]}}}, Geometry::getProperties());
}

Properties Mesh::getProperties() const {
    return joined({{"file", file}, {"scale", numbers(scale)}, {"triangles", double(triangles.size() / 3)}},
                  Geometry::getProperties());
}

Properties HeightField::getProperties() const {
    return joined({{"columns", double(columns)},
                   {"rows", double(rows)},
                   {"halfSizes", std::vector<double>{halfSizes[0], halfSizes[1]}}},
                  Geometry::getProperties());
}

} // namespace Geometries

} // namespace Physics3D

namespace Simulation {

Properties Settings::getProperties() const {
    return {{"hasGravity", hasGravity}, {"gravity", numbers(gravity)}, {"timeStep", timeStep}};
}

Properties Keyframe::getProperties() const {
    return {{"time", time}, {"positions", positions}, {"velocities", velocities}, {"controls", controls}};
}

} // namespace Simulation

namespace Robotics {

namespace Joints {

Properties Joint::getProperties() const {
    return {{"parent", nameOf(parent)},
            {"child", nameOf(child)},
            {"anchor", numbers(anchor)},
            {"axis", numbers(axis)},
            {"closesLoop", closesLoop}};
}

Properties SingleAxisJoint::getProperties() const {
    Properties properties = Joint::getProperties();
    if (hasRange)
        properties = joined(properties, {{"lower", lower}, {"upper", upper}});
    if (speed)
        properties.push_back({"speed", *speed});
    return joined(properties, {{"start", start},
                               {"maximumEffort", maximumEffort},
                               {"maximumSpeed", maximumSpeed},
                               {"friction", friction},
                               {"damping", damping},
                               {"stiffness", stiffness},
                               {"restPosition", restPosition}});
}

Properties PositionHingeJoint::getProperties() const {
    return joined(HingeJoint::getProperties(), {{"gain", gain}});
}

} // namespace Joints

Properties Mimic::getProperties() const {
    Properties properties{
        {"follower", nameOf(follower)}, {"leader", nameOf(leader)}, {"multiplier", multiplier}, {"offset", offset}};
    if (curve != std::array<double, 3>{})
        properties.push_back({"curve", std::vector<double>(curve.begin(), curve.end())});
    return properties;
}

} // namespace Robotics

namespace Control {

Properties Actuator::getProperties() const {
    return {{"joint", nameOf(joint)},
            {"gear", gear},
            {"lowerControl", lowerControl},
            {"upperControl", upperControl},
            {"lowerForce", lowerForce},
            {"upperForce", upperForce},
            {"gain", gain}};
}

Properties PositionActuator::getProperties() const {
    return joined(Actuator::getProperties(), {{"damping", damping}});
}

} // namespace Control

namespace Visuals {

Properties Material::getProperties() const {
    return {{"color", numbers(color)}, {"texture", texture}};
}

Properties Visual::getProperties() const {
    Properties properties{{"shape", geometry ? geometry->getType() : ""}};
    if (geometry)
        properties = joined(properties, geometry->getProperties());
    if (material)
        properties = joined(properties, material->getProperties());
    return properties;
}

Properties Light::getProperties() const {
    return {{"body", nameOf(body)},
            {"position", numbers(position)},
            {"direction", numbers(direction)},
            {"color", numbers(color)},
            {"specular", numbers(specular)},
            {"directional", directional},
            {"spotAngle", spotAngle},
            {"spotExponent", spotExponent},
            {"castsShadows", castsShadows},
            {"attenuation", std::vector<double>(attenuation.begin(), attenuation.end())}};
}

Properties Camera::getProperties() const {
    return {{"body", nameOf(body)},
            {"transform", numbers(transform)},
            {"verticalAngle", verticalAngle},
            {"width", double(width)},
            {"height", double(height)},
            {"near", near},
            {"far", far}};
}

} // namespace Visuals

namespace Sensors {

Properties Sensor::getProperties() const {
    return {{"body", nameOf(body)}, {"transform", numbers(transform)}, {"rate", rate}};
}

Properties Lidar::getProperties() const {
    return joined(Sensor::getProperties(), {{"rows", double(rows)},
                                            {"columns", double(columns)},
                                            {"horizontalAngle", horizontalAngle},
                                            {"verticalAngle", verticalAngle},
                                            {"nearest", nearest},
                                            {"farthest", farthest},
                                            {"deviation", deviation}});
}

} // namespace Sensors

} // namespace tavlang
