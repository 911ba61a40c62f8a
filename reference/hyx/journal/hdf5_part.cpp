// Bodies and their states as datasets.
#include "reference/hyx/journal/hdf5_part.h"

#include "platform/hyxCollide/geometry.h"
#include "reference/hyx/journal/contact_rows.h"
#include "reference/hyx/journal/joint_json.h"
#include "reference/hyx/journal/shape_json.h"

#include <algorithm>
#include <numeric>
#include <stdexcept>

namespace hyx {
namespace {

using nlohmann::json;

std::runtime_error disagreement() {
    return std::runtime_error("the journal is damaged: the sizes of its parts do not agree");
}

} // namespace

Hdf5PartWriter::Hdf5PartWriter(hid_t session, std::string const& name, json const& description, Hdf5Storage storage)
    : m_group(createHdf5Group(session, name)) {
    auto const keys = description.at("bodies").get<std::vector<std::string>>();
    writeHdf5Texts(m_group, "bodies", keys);
    writeHdf5Texts(m_group, "shapes", {description.at("shapes").dump()});
    addRows("time", 1, 1, {.compressed = storage.compressed});
    addRows("position", keys.size(), 3, storage);
    addRows("rotation", keys.size(), 4, storage);
    if (description.at("velocities").get<bool>()) {
        addRows("velocity", keys.size(), 3, storage);
        addRows("angularVelocity", keys.size(), 3, storage);
    }
    for (char const* text : {"conditions", "description", "mechanism"})
        if (description.contains(text))
            writeHdf5Texts(
                m_group, text,
                {description[text].is_string() ? description[text].get<std::string>() : description[text].dump()});
    if (auto const joints = description.value("joints", std::vector<std::string>()); !joints.empty()) {
        writeHdf5Texts(m_group, "joints", joints);
        addRows("joint", joints.size(), 2, storage);
    }
    if (description.value("contacts", false)) // logs of former versions lack it
        addCounted("contacts", "contactCount", 1, contactColumns(),
                   {.single = true, .compressed = storage.compressed}); // there are many, to be looked at
    if (size_t const systems = description.at("systems").get<size_t>(); systems > 0)
        addCounted("particles", "particleCount", systems, grainColumns(), storage);
}

void Hdf5PartWriter::addRows(std::string const& name, size_t items, size_t components, Hdf5Storage storage) {
    m_rows.push_back({.name = name, .items = items, .components = components, .storage = storage});
}

void Hdf5PartWriter::addCounted(std::string const& name, std::string const& countName, size_t owners,
                                std::vector<std::string> const& columns, Hdf5Storage storage) {
    std::string const singular = name.substr(0, name.size() - 1);
    writeHdf5Texts(m_group, singular + "Columns", columns);
    addRows(countName, owners, 1, {.compressed = storage.compressed});
    addRows(name, 1, columns.size(), storage);
    m_rows.back().counted = true;
}

void Hdf5PartWriter::store(std::span<double const> state) {
    constexpr size_t mostWaiting = 1024, mostNumbers = 1 << 20;
    std::vector<std::span<double const>> pieces;
    for (Rows const& rows : m_rows) {
        double const items =
            rows.counted ? std::accumulate(pieces.back().begin(), pieces.back().end(), 0.0) : double(rows.items);
        double const numbers = items * double(rows.components);
        if (!(numbers >= 0 && numbers <= double(state.size())))
            throw disagreement();
        pieces.push_back(state.first(size_t(numbers)));
        state = state.subspan(size_t(numbers));
    }
    if (!state.empty())
        throw disagreement();
    for (size_t i = 0; i < m_rows.size(); ++i)
        m_rows[i].waiting.insert(m_rows[i].waiting.end(), pieces[i].begin(), pieces[i].end());
    auto const full = [](Rows const& rows) { return rows.waiting.size() >= mostNumbers; };
    if (++m_waiting >= mostWaiting || std::any_of(m_rows.begin(), m_rows.end(), full))
        flush();
}

void Hdf5PartWriter::flush() {
    for (Rows& rows : m_rows)
        write(rows);
    m_waiting = 0;
}

void Hdf5PartWriter::write(Rows& rows) {
    size_t const width = std::max<size_t>(rows.items * rows.components, 1);
    if (!rows.data)
        rows.data = Hdf5Rows::create(m_group, rows.name, rows.items, rows.components, rows.storage,
                                     rows.waiting.size() / width);
    rows.data.append(rows.waiting);
    rows.waiting.clear();
}

Hdf5PartReader::Hdf5PartReader(Hdf5Handle const& group)
    : m_particles(group, "particles", "particleCount", grainColumns().size()),
      m_contacts(group, "contacts", "contactCount", contactColumns().size()) {
    m_keys = readHdf5Texts(group, "bodies");
    std::vector<std::string> const shapes = readHdf5Texts(group, "shapes");
    if (!shapes.empty())
        m_shapes = json::parse(shapes.front(), nullptr, false);
    m_time = Hdf5Rows::open(group, "time", 1);
    m_position = openBodyRows(group, "position", 3);
    m_rotation = openBodyRows(group, "rotation", 4);
    if (hasHdf5Link(group, "velocity"))
        m_velocity = openBodyRows(group, "velocity", 3);
    if (hasHdf5Link(group, "angularVelocity"))
        m_angularVelocity = openBodyRows(group, "angularVelocity", 3);
    if (hasHdf5Link(group, "joints") && hasHdf5Link(group, "joint")) {
        m_joints = readHdf5Texts(group, "joints");
        m_joint = Hdf5Rows::open(group, "joint", 2);
        if (m_joint.numItems() != m_joints.size())
            throw disagreement();
    }
    auto const text = [&group](char const* name) {
        std::vector<std::string> const found =
            hasHdf5Link(group, name) ? readHdf5Texts(group, name) : std::vector<std::string>();
        return found.empty() ? std::string() : found.front();
    };
    m_conditions = text("conditions");
    m_description = text("description");
    std::string const mechanism = text("mechanism");
    m_mechanism = mechanism.empty() ? json::array() : json::parse(mechanism, nullptr, false);
    if (!m_mechanism.is_array())
        throw disagreement();
    if (m_time.numItems() != 1 || !m_shapes.is_array() || m_shapes.size() != m_keys.size())
        throw disagreement();
    // Where writing was cut off, the arrays need not have come equally far.
    m_numStates = m_time.numRows();
    if (!m_keys.empty())
        m_numStates = std::min({m_numStates, m_position.numRows(), m_rotation.numRows()});
    if (m_particles.numOwners() > 0)
        m_numStates = std::min(m_numStates, m_particles.numStates());
}

Hdf5Rows Hdf5PartReader::openBodyRows(hid_t group, char const* name, size_t components) const {
    Hdf5Rows rows = Hdf5Rows::open(group, name, components);
    if (rows.numItems() != m_keys.size())
        throw disagreement();
    return rows;
}

ref_ptr<RigidBody> Hdf5PartReader::makeBody(size_t body) const {
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
        int const motion = description.at("motion").get<int>();
        if (motion < RigidBody::DYNAMICS || motion > RigidBody::STATIC)
            throw std::invalid_argument("there is no such motion");
        made->setMotionControl(RigidBody::MotionControl(motion));
    } catch (std::exception const& error) {
        throw std::runtime_error("the journal is damaged: the body '" + key + "': " + error.what());
    }
    return made;
}

ConstraintPtrVector Hdf5PartReader::makeJoints(RigidBodyPtrVector const& bodies) const {
    ConstraintPtrVector joints;
    try {
        for (json const& description : m_mechanism)
            joints.push_back(makeJoint(description, bodies));
    } catch (std::exception const& error) {
        throw std::runtime_error(std::string("the journal is damaged: its joints: ") + error.what());
    }
    return joints;
}

double Hdf5PartReader::time(size_t row) const {
    return m_time.read(row).at(0);
}

size_t Hdf5PartReader::rowAt(double time) const {
    size_t first = 0, count = m_numStates; // the first of those later than the time
    while (count > 0) {
        size_t const half = count / 2;
        if (this->time(first + half) <= time) {
            first += half + 1;
            count -= half + 1;
        } else {
            count = half;
        }
    }
    return first > 0 ? first - 1 : 0;
}

JournalPartReader::State Hdf5PartReader::read(size_t row) const {
    State state;
    state.time = m_time.read(row).at(0);
    state.positions = m_position.read(row);
    state.rotations = m_rotation.read(row);
    for (size_t i = 0; i < state.rotations.size(); i += 4)
        if (std::all_of(&state.rotations[i], &state.rotations[i] + 4, [](double part) { return part == 0; }))
            throw std::runtime_error("the journal is damaged: it has a rotation that is none");
    if (m_velocity && m_velocity.numRows() > row)
        state.velocities = m_velocity.read(row);
    if (m_angularVelocity && m_angularVelocity.numRows() > row)
        state.angularVelocities = m_angularVelocity.read(row);
    if (m_joint && m_joint.numRows() > row) {
        std::vector<double> const joints = m_joint.read(row);
        for (size_t i = 0; i < m_joints.size(); ++i)
            state.joints[m_joints[i]] = joints[2 * i];
    }
    if (row < m_contacts.numStates())
        state.contacts = m_contacts.read(row);
    requireContacts(state.contacts, m_keys.size());
    for (size_t system = 0; system < m_particles.numOwners(); ++system)
        state.grains.push_back(grainsOf(m_particles.read(row, system)));
    return state;
}

} // namespace hyx
