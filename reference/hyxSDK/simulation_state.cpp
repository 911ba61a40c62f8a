// Saves the state of a simulation and brings it back, bit by bit.
#include "platform/hyxSDK/simulation.h"
#include "reference/hyxSDK/simulation_implementation.h"
#include "reference/machinery/bullet/constraint_implementation.h"
#include "reference/machinery/bullet/rigid_body_implementation.h"
#include "reference/machinery/files/missing_file.h"
#include "reference/machinery/files/state_keepers.h"
#include "reference/machinery/files/whole_file.h"

#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <system_error>

namespace hyxSDK {

using hyx::StateBytes;

namespace {

constexpr std::string_view kind = "hyxstat";
/// The last digit changes with whatever a state holds.
constexpr std::string_view magic = "hyxstat4";

/// Fowler-Noll-Vo: finds damage, not intent.
std::uint64_t checkSum(std::string_view bytes) {
    std::uint64_t sum = 0xcbf29ce484222325;
    for (char const byte : bytes)
        sum = (sum ^ static_cast<unsigned char>(byte)) * 0x100000001b3;
    return sum;
}

std::string sealed(std::string const& content) {
    std::uint64_t const sum = checkSum(content);
    return std::string(magic) + std::string(reinterpret_cast<char const*>(&sum), sizeof sum) + content;
}

std::string unsealed(std::string const& state) {
    if (state.starts_with(kind) && !state.starts_with(magic))
        throw std::runtime_error("the state was saved by another version, whose states this one cannot restore");
    if (!state.starts_with(magic))
        throw std::runtime_error("this is no saved state of a simulation");
    std::size_t const start = magic.size() + sizeof(std::uint64_t);
    std::string const content = state.substr(std::min(start, state.size()));
    if (sealed(content) != state)
        throw std::runtime_error("the saved state is damaged");
    return content;
}

void exchange(StateBytes& bytes, btTransform& place) {
    bytes(place.getBasis()[0], place.getBasis()[1], place.getBasis()[2], place.getOrigin());
}

void exchange(StateBytes& bytes, hyx::RigidBody& body) {
    hyx::RigidBody::Implementation& self = body.implementation();
    auto control = self.control;
    bool enabled = self.enabled;
    bytes(control, enabled);
    body.setMotionControl(control);
    body.setEnable(enabled);

    btTransform massFrame = self.massFrame;
    exchange(bytes, massFrame);
    bytes(self.mass, self.inertia, self.massFixed, self.inertiaFixed, self.centerFixed);
    bytes(self.kinematicVelocity, self.kinematicSpin);
    if (bytes.restores() && !(massFrame == self.massFrame)) {
        self.setMassFrame(massFrame);
        self.rebuildShape();
    }

    btRigidBody& bullet = self.bullet;
    btTransform place = bullet.getWorldTransform();
    btVector3 velocity = bullet.getLinearVelocity();
    btVector3 spin = bullet.getAngularVelocity();
    btVector3 force = bullet.getTotalForce();
    btVector3 torque = bullet.getTotalTorque();
    double damping[2] = {bullet.getLinearDamping(), bullet.getAngularDamping()};
    int activation = bullet.getActivationState();
    double stillFor = bullet.getDeactivationTime();
    exchange(bytes, place);
    bytes(velocity, spin, force, torque, damping, activation, stillFor);
    if (!bytes.restores())
        return;
    bullet.setWorldTransform(place);
    bullet.setInterpolationWorldTransform(place);
    self.applyControl();
    bullet.setLinearVelocity(velocity);
    bullet.setAngularVelocity(spin);
    bullet.clearForces();
    bullet.applyCentralForce(force);
    bullet.applyTorque(torque);
    bullet.setDamping(damping[0], damping[1]);
    bullet.forceActivationState(activation);
    bullet.setDeactivationTime(stillFor);
}

void exchange(StateBytes& bytes, hyx::ElementaryConstraint& element) {
    bool enabled = element.isEnabled();
    hyx::RangeReal range = element.getForceRange();
    double numbers[] = {element.getCompliance(), element.getDamping(), element.getCurrentForce()};
    bytes(enabled, range, numbers);
    element.setEnable(enabled);
    element.setForceRange(range);
    element.setCompliance(numbers[0]);
    element.setDamping(numbers[1]);
    element.setCurrentForce(numbers[2]);
}

void exchange(StateBytes& bytes, hyx::ConstraintRow& row) {
    bytes(row.lowerForce, row.upperForce, row.active, row.force);
}

void exchange(StateBytes& bytes, hyx::Constraint::Implementation& joint,
              hyx::Constraint::Implementation::FreeDirection& direction) {
    using Joint = hyx::Constraint::Implementation;
    exchange(bytes, *direction.motor);
    exchange(bytes, *direction.range);
    exchange(bytes, *direction.lock);
    double values[] = {direction.motor->getSpeed(), direction.lock->getPosition(), direction.motor->getMaximumSpeed()};
    hyx::RangeReal range = direction.range->getRange();
    bytes(values, range, direction.resistance, direction.turns, direction.lastAngle);
    direction.motor->setSpeed(values[0]);
    direction.lock->setPosition(values[1]);
    direction.motor->setMaximumSpeed(values[2]);
    direction.range->setRange(range);
    for (int part = 0; part < Joint::NUM_PARTS; ++part) {
        bool made = direction.rows[part] != nullptr;
        bytes(made);
        // Those of friction and viscosity are made when they are first asked for.
        if (made && !direction.rows[part])
            joint.resist(static_cast<Joint::Part>(part), direction.resistance[part - Joint::FRICTION]);
        hyx::ConstraintRow unused(hyx::Constraint::TRANSLATIONAL);
        if (made)
            exchange(bytes, direction.rows[part] ? *direction.rows[part] : unused);
    }
}

void exchange(StateBytes& bytes, hyx::Constraint& constraint) {
    hyx::Constraint::Implementation& self = constraint.implementation();
    bytes(self.enabled, self.compliance, self.damping);
    for (auto const& frame : self.frames) {
        hyx::AffineMatrix4x4 local = frame->getLocalMatrix();
        bytes(local);
        frame->setLocalMatrix(local);
    }
    bytes.expect(self.rows.size(), "held directions in a joint");
    for (auto const& row : self.rows)
        exchange(bytes, *row);
    bytes.expect(self.free.size(), "free directions in a joint");
    for (auto& direction : self.free)
        exchange(bytes, self, direction);
}

} // namespace

void Simulation::Implementation::exchangeState(StateBytes& bytes) {
    bytes.expect(bodies.size(), "bodies");
    bytes.expect(constraints.size(), "constraints");
    bytes.expect(loneGeometries.size(), "geometries without a body");
    bytes.expect(processes.size(), "processes");
    hyx::Vec3 pull = gravity;
    SolverType kind = solver;
    int iterations = numIterations;
    bool sleep = autoSleep;
    bytes(timeStep, startTime, numSteps, pull, kind, iterations, sleep);
    if (bytes.restores()) {
        owner.setGravity(pull);
        owner.setSolver(kind);
        owner.setNumIterations(iterations);
        owner.setEnableAutoSleep(sleep);
    }
    for (auto const& body : bodies)
        exchange(bytes, *body);
    for (auto const& constraint : constraints)
        exchange(bytes, *constraint);
    std::vector<hyxCollide::Geometry*> lone;
    for (auto const& geometry : loneGeometries)
        lone.push_back(geometry.get());
    world.exchangeState(bytes, bodyPointers(), lone);
    for (auto const& process : processes)
        hyx::exchangeState(process.get(), bytes);
    bytes.finish();
}

std::string Simulation::saveState() const {
    StateBytes bytes;
    m_implementation->exchangeState(bytes);
    return sealed(bytes.bytes());
}

void Simulation::restoreState(std::string const& state) {
    if (m_implementation->stepping)
        throw std::logic_error("the state cannot be restored in the middle of a step");
    StateBytes bytes(unsealed(state));
    StateBytes before;
    m_implementation->exchangeState(before);
    try {
        m_implementation->exchangeState(bytes);
    } catch (...) {
        StateBytes back(before.bytes());
        m_implementation->exchangeState(back);
        throw;
    }
}

void Simulation::save(hyx::String const& fileName) const {
    hyx::writeWholeFile(std::string(fileName), saveState());
}

void Simulation::restore(hyx::String const& fileName) {
    hyxOSG::requireFile(std::string(fileName));
    std::ifstream file(fileName, std::ios::binary);
    if (!file)
        throw std::filesystem::filesystem_error("cannot read the state", std::string(fileName),
                                                std::error_code(errno, std::generic_category()));
    std::stringstream content;
    content << file.rdbuf();
    restoreState(content.str());
}

} // namespace hyxSDK
