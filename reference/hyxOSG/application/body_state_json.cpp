// Turns bodies into JSON and back.
#include "reference/hyxOSG/application/body_state_json.h"

#include <cmath>
#include <optional>
#include <stdexcept>

namespace hyxOSG {
namespace {

nlohmann::json list(hyx::Vec3 const& v) {
    return {v.x, v.y, v.z};
}

template <class Value>
std::optional<Value> read(nlohmann::json const& state, char const* name) {
    if (!state.contains(name))
        return std::nullopt;
    nlohmann::json const& numbers = state[name];
    Value value;
    bool good = numbers.is_array() && numbers.size() == value.size();
    for (size_t i = 0; good && i < value.size(); ++i) {
        good = numbers[i].is_number() && std::isfinite(numbers[i].get<double>());
        if (good)
            value[i] = numbers[i].get<double>();
    }
    if (!good)
        throw std::invalid_argument(std::string("'") + name + "' must be a list of " + std::to_string(value.size()) +
                                    " numbers");
    return value;
}

} // namespace

nlohmann::json bodyState(hyx::RigidBody const& body) {
    hyx::Quat const rotation = body.getRotation();
    return {{"name", std::string(body.getName())},
            {"position", list(body.getPosition())},
            {"rotation", {rotation.x, rotation.y, rotation.z, rotation.w}},
            {"velocity", list(body.getVelocity())},
            {"angularVelocity", list(body.getAngularVelocity())}};
}

void setBodyState(hyx::RigidBody& body, nlohmann::json const& state) {
    auto const position = read<hyx::Vec3>(state, "position");
    auto const rotation = read<hyx::Quat>(state, "rotation");
    auto const velocity = read<hyx::Vec3>(state, "velocity");
    auto const angularVelocity = read<hyx::Vec3>(state, "angularVelocity");
    auto const force = read<hyx::Vec3>(state, "force");
    auto const torque = read<hyx::Vec3>(state, "torque");
    if (rotation && !(rotation->length() > 0))
        throw std::invalid_argument("'rotation' must not be zero");
    if (position)
        body.setPosition(*position);
    if (rotation)
        body.setRotation(rotation->normal());
    if (velocity)
        body.setVelocity(*velocity);
    if (angularVelocity)
        body.setAngularVelocity(*angularVelocity);
    if (force)
        body.addForce(*force);
    if (torque)
        body.addTorque(*torque);
}

} // namespace hyxOSG
