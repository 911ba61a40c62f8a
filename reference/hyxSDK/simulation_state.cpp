// Saves the state of all bodies and brings it back, bit by bit.
#include "platform/hyxSDK/simulation.h"
#include "reference/hyxSDK/simulation_implementation.h"
#include "reference/machinery/bullet/bullet_values.h"
#include "reference/machinery/bullet/constraint_implementation.h"
#include "reference/machinery/bullet/rigid_body_implementation.h"
#include "reference/machinery/files/whole_file.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <system_error>

namespace hyxSDK {

namespace {

constexpr char magic[8] = {'h', 'y', 'x', 's', 't', 'a', 't', '1'};

/// What is kept of one body, in bullet's own terms, so that nothing is lost by converting.
struct BodyState {
    double basis[9];
    double origin[3];
    double velocity[3];
    double spin[3];
    /// A RigidBody::MotionControl.
    double control;
    double enabled;
};

BodyState stateOf(hyx::RigidBody const& body) {
    hyx::RigidBody::Implementation const& self = body.implementation();
    BodyState state{};
    btTransform const& place = self.bullet.getWorldTransform();
    btVector3 const velocity = self.velocity();
    btVector3 const spin = self.spin();
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j)
            state.basis[3 * i + j] = place.getBasis()[i][j];
        state.origin[i] = place.getOrigin()[i];
        state.velocity[i] = velocity[i];
        state.spin[i] = spin[i];
    }
    state.control = body.getMotionControl();
    state.enabled = body.isEnabled();
    return state;
}

void putState(hyx::RigidBody& body, BodyState const& state) {
    body.setMotionControl(static_cast<hyx::RigidBody::MotionControl>(static_cast<int>(state.control)));
    body.setEnable(state.enabled != 0);
    btMatrix3x3 basis;
    for (int i = 0; i < 3; ++i)
        basis[i].setValue(state.basis[3 * i], state.basis[3 * i + 1], state.basis[3 * i + 2]);
    hyx::RigidBody::Implementation& self = body.implementation();
    self.bullet.setWorldTransform(btTransform(basis, btVector3(state.origin[0], state.origin[1], state.origin[2])));
    self.bullet.setInterpolationWorldTransform(self.bullet.getWorldTransform());
    self.bullet.updateInertiaTensor();
    self.bullet.clearForces();
    body.setVelocity(hyx::Vec3(state.velocity[0], state.velocity[1], state.velocity[2]));
    body.setAngularVelocity(hyx::Vec3(state.spin[0], state.spin[1], state.spin[2]));
}

template <class T>
void write(std::string& bytes, T const& value) {
    bytes.append(reinterpret_cast<char const*>(&value), sizeof value);
}

class Reader {
public:
    explicit Reader(std::string const& bytes) : m_bytes(bytes) {}

    template <class T>
    T read() {
        T value;
        if (m_bytes.size() - m_place < sizeof value)
            throw std::runtime_error("the saved state is cut off");
        std::memcpy(&value, m_bytes.data() + m_place, sizeof value);
        m_place += sizeof value;
        return value;
    }

    bool atEnd() const { return m_place == m_bytes.size(); }

private:
    std::string const& m_bytes;
    std::size_t m_place = 0;
};

/// Fowler-Noll-Vo: finds damage, not intent.
std::uint64_t checkSum(std::string_view bytes) {
    std::uint64_t sum = 0xcbf29ce484222325;
    for (char const byte : bytes)
        sum = (sum ^ static_cast<unsigned char>(byte)) * 0x100000001b3;
    return sum;
}

bool isSound(BodyState const& state) {
    auto const* numbers = reinterpret_cast<double const*>(&state);
    for (std::size_t i = 0; i < sizeof state / sizeof(double); ++i)
        if (!std::isfinite(numbers[i]))
            return false;
    return state.control == 1 || state.control == 2 || state.control == 3;
}

} // namespace

std::string Simulation::saveState() const {
    std::string bytes(magic, sizeof magic);
    Implementation const& self = *m_implementation;
    write(bytes, getTimeStamp());
    write(bytes, static_cast<hyx::UInt>(self.bodies.size()));
    write(bytes, static_cast<hyx::UInt>(self.constraints.size()));
    for (auto const& body : self.bodies)
        write(bytes, stateOf(*body));
    for (auto const& constraint : self.constraints) {
        write(bytes, static_cast<double>(constraint->isEnabled()));
        for (auto const& direction : constraint->implementation().free) {
            write(bytes, direction.turns);
            write(bytes, direction.lastAngle);
        }
    }
    return bytes;
}

void Simulation::restoreState(std::string const& state) {
    Implementation& self = *m_implementation;
    if (self.stepping)
        throw std::logic_error("the state cannot be restored in the middle of a step");
    if (state.compare(0, sizeof magic, magic, sizeof magic) != 0)
        throw std::runtime_error("this is no saved state of a simulation");
    std::string const content = state.substr(sizeof magic);
    Reader reader(content);
    auto const time = reader.read<hyx::TimeStamp>();
    auto const numBodies = reader.read<hyx::UInt>();
    auto const numConstraints = reader.read<hyx::UInt>();
    if (numBodies != self.bodies.size() || numConstraints != self.constraints.size())
        throw std::runtime_error("the state was saved with " + std::to_string(numBodies) + " bodies and " +
                                 std::to_string(numConstraints) + " constraints; the simulation has " +
                                 std::to_string(self.bodies.size()) + " and " +
                                 std::to_string(self.constraints.size()));
    // Everything is read and checked before anything changes.
    std::vector<BodyState> bodyStates;
    for (hyx::UInt i = 0; i < numBodies; ++i)
        bodyStates.push_back(reader.read<BodyState>());
    std::vector<double> jointStates;
    for (auto const& constraint : self.constraints)
        for (std::size_t i = 0; i < 1 + 2 * constraint->implementation().free.size(); ++i)
            jointStates.push_back(reader.read<double>());
    if (!reader.atEnd() || !std::isfinite(time) || !std::all_of(bodyStates.begin(), bodyStates.end(), isSound))
        throw std::runtime_error("the saved state is damaged, or belongs to other objects");

    setTimeStamp(time);
    for (hyx::UInt i = 0; i < numBodies; ++i)
        putState(*self.bodies[i], bodyStates[i]);
    auto next = jointStates.begin();
    for (auto const& constraint : self.constraints) {
        constraint->setEnable(*next++ != 0);
        for (auto& direction : constraint->implementation().free) {
            direction.turns = *next++;
            direction.lastAngle = *next++;
        }
    }
    self.world.forgetHistory(self.bodyPointers());
}

void Simulation::save(hyx::String const& fileName) const {
    std::string bytes = saveState();
    write(bytes, checkSum(bytes));
    hyx::writeWholeFile(std::string(fileName), bytes);
}

void Simulation::restore(hyx::String const& fileName) {
    std::ifstream file(fileName, std::ios::binary);
    if (!file)
        throw std::filesystem::filesystem_error("cannot read the state", std::string(fileName),
                                                std::error_code(errno, std::generic_category()));
    std::stringstream content;
    content << file.rdbuf();
    std::string state = content.str();
    std::size_t const size = state.size() - std::min(state.size(), sizeof(std::uint64_t));
    std::string sum;
    write(sum, checkSum(std::string_view(state).substr(0, size)));
    if (state.compare(size, std::string::npos, sum) != 0)
        throw std::runtime_error("the file '" + fileName + "' is damaged, or no saved state");
    state.resize(size);
    restoreState(state);
}

} // namespace hyxSDK
