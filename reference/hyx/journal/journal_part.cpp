// Bodies and their states as datasets.
#include "reference/hyx/journal/journal_part.h"

#include "platform/hyxCollide/geometry.h"
#include "reference/hyx/journal/shape_json.h"

#include <algorithm>
#include <set>
#include <stdexcept>

namespace hyx {
namespace {

using nlohmann::json;

constexpr size_t statesInBlock = 32;

json describeBody(RigidBody const& body) {
    json geometries = json::array();
    for (auto const& geometry : body.getGeometries()) {
        AffineMatrix4x4 const& local = geometry->getLocalTransform();
        geometries.push_back({{"shape", describeShape(*geometry->getShape())},
                              {"local", std::vector<double>(local.ptr(), local.ptr() + 16)}});
    }
    return json{{"geometries", geometries}, {"motion", int(body.getMotionControl())}, {"mass", body.getMass()}};
}

void add(std::vector<double>& list, Vec3 const& v) {
    list.insert(list.end(), {v.x, v.y, v.z});
}

void writeBlock(Hdf5Rows& rows, std::vector<double>& numbers) {
    if (rows)
        rows.append(numbers);
    numbers.clear();
}

} // namespace

std::vector<std::string> JournalKeys::of(RigidBodyPtrVector const& bodies) {
    std::map<RigidBody const*, std::string> next;
    std::set<std::string> used;
    std::vector<std::string> keys;
    for (size_t place = 0; place < bodies.size(); ++place) {
        auto const known = m_keys.find(bodies[place].get());
        std::string key = known != m_keys.end() ? known->second : std::string(bodies[place]->getName());
        if (key.empty() || used.contains(key))
            key = "#" + std::to_string(m_keys.empty() ? place : m_nextNumber++);
        used.insert(key);
        next[bodies[place].get()] = key;
        keys.push_back(key);
    }
    m_nextNumber = std::max(m_nextNumber, bodies.size());
    m_keys = std::move(next);
    return keys;
}

JournalPartWriter::JournalPartWriter(hid_t session, std::string const& name, RigidBodyPtrVector const& bodies,
                                     std::vector<std::string> const& keys, ParticleSystems const& systems,
                                     Hdf5Storage storage, bool velocities)
    : m_bodies(bodies), m_group(createHdf5Group(session, name)), m_particles(m_group, systems, storage) {
    json shapes = json::array();
    for (auto const& body : bodies)
        shapes.push_back(describeBody(*body));
    writeHdf5Texts(m_group, "bodies", keys);
    writeHdf5Texts(m_group, "shapes", {shapes.dump()});
    m_time = Hdf5Rows::create(m_group, "time", 1, 1, {.compressed = storage.compressed});
    m_position = Hdf5Rows::create(m_group, "position", bodies.size(), 3, storage);
    m_rotation = Hdf5Rows::create(m_group, "rotation", bodies.size(), 4, storage);
    if (!velocities)
        return;
    m_velocity = Hdf5Rows::create(m_group, "velocity", bodies.size(), 3, storage);
    m_angularVelocity = Hdf5Rows::create(m_group, "angularVelocity", bodies.size(), 3, storage);
}

bool JournalPartWriter::covers(RigidBodyPtrVector const& bodies, ParticleSystems const& systems) const {
    auto const same = [](auto const& a, auto const& b) { return a.get() == b.get(); };
    return std::equal(m_bodies.begin(), m_bodies.end(), bodies.begin(), bodies.end(), same) &&
           std::equal(m_particles.systems().begin(), m_particles.systems().end(), systems.begin(), systems.end(), same);
}

void JournalPartWriter::store(double time) {
    m_times.push_back(time);
    m_particles.store();
    for (auto const& body : m_bodies) {
        Quat const rotation = body->getRotation();
        add(m_positions, body->getPosition());
        m_rotations.insert(m_rotations.end(), {rotation.x, rotation.y, rotation.z, rotation.w});
        if (!m_velocity)
            continue;
        add(m_velocities, body->getVelocity());
        add(m_angularVelocities, body->getAngularVelocity());
    }
    if (m_times.size() >= statesInBlock)
        flush();
}

void JournalPartWriter::flush() {
    writeBlock(m_position, m_positions);
    writeBlock(m_rotation, m_rotations);
    writeBlock(m_velocity, m_velocities);
    writeBlock(m_angularVelocity, m_angularVelocities);
    m_particles.flush();
    writeBlock(m_time, m_times); // last: a state counts when its time is there
    if (H5Fflush(m_group, H5F_SCOPE_GLOBAL) < 0)
        throw std::runtime_error("the journal cannot be written: is the disk full?");
}

JournalPartReader::JournalPartReader(Hdf5Handle const& group) : m_particles(group) {
    m_keys = readHdf5Texts(group, "bodies");
    std::vector<std::string> const shapes = readHdf5Texts(group, "shapes");
    if (!shapes.empty())
        m_shapes = json::parse(shapes.front(), nullptr, false);
    m_time = Hdf5Rows::open(group, "time");
    m_position = Hdf5Rows::open(group, "position");
    m_rotation = Hdf5Rows::open(group, "rotation");
    if (hasHdf5Link(group, "velocity"))
        m_velocity = Hdf5Rows::open(group, "velocity");
    if (hasHdf5Link(group, "angularVelocity"))
        m_angularVelocity = Hdf5Rows::open(group, "angularVelocity");
    bool const fits =
        m_shapes.is_array() && m_shapes.size() == m_keys.size() && m_position.numItems() == m_keys.size() &&
        m_rotation.numItems() == m_keys.size() &&
        (m_keys.empty() || (m_position.numRows() >= m_time.numRows() && m_rotation.numRows() >= m_time.numRows())) &&
        (m_particles.numSystems() == 0 || m_particles.numStates() >= m_time.numRows());
    if (!fits)
        throw std::runtime_error("the journal is damaged: the sizes of its parts do not agree");
}

ref_ptr<RigidBody> JournalPartReader::makeBody(size_t body) const {
    std::string const& key = m_keys.at(body);
    ref_ptr<RigidBody> made = new RigidBody(key[0] == '#' ? Name() : Name(key));
    try {
        json const& description = m_shapes.at(body);
        for (json const& geometry : description.at("geometries")) {
            auto const local = geometry.at("local").get<std::vector<double>>();
            if (local.size() != 16)
                throw std::invalid_argument("a transform has 16 numbers");
            ref_ptr<hyxCollide::Shape> const shape = makeShape(geometry.at("shape"));
            ref_ptr<hyxCollide::Geometry> const part = new hyxCollide::Geometry(shape.get());
            made->add(part.get(), AffineMatrix4x4(local.data()));
        }
        if (description.contains("mass"))
            made->setMass(description["mass"].get<double>());
        made->setMotionControl(RigidBody::MotionControl(description.at("motion").get<int>()));
    } catch (std::exception const& error) {
        throw std::runtime_error("the journal is damaged: the body '" + key + "': " + error.what());
    }
    return made;
}

JournalPartReader::State JournalPartReader::read(size_t row) const {
    State state;
    state.time = m_time.read(row).at(0);
    state.positions = m_position.read(row);
    state.rotations = m_rotation.read(row);
    if (m_velocity && m_velocity.numRows() > row)
        state.velocities = m_velocity.read(row);
    if (m_angularVelocity && m_angularVelocity.numRows() > row)
        state.angularVelocities = m_angularVelocity.read(row);
    return state;
}

} // namespace hyx
