// Sessions: recording and playback.
#include "platform/hyx/journal/journal.h"

#include "platform/hyxSDK/simulation.h"
#include "reference/hyx/journal/journal_part.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <map>
#include <stdexcept>

namespace hyx {
namespace {

std::string partName(size_t number) {
    char name[24];
    std::snprintf(name, sizeof name, "part_%06zu", number);
    return name;
}

std::string nextSessionName(hid_t file) {
    for (size_t number = 1;; ++number) {
        std::string const name = "session_" + std::to_string(number);
        if (!hasHdf5Link(file, name))
            return name;
    }
}

} // namespace

struct Journal::Implementation {
    std::string path;
    std::string sessionName;
    Hdf5Handle file;
    Hdf5Handle session;
    size_t numStates = 0;

    // Recording
    Settings settings;
    std::unique_ptr<JournalPartWriter> writer; ///< null before the first state
    JournalKeys keys;
    size_t numParts = 0;
    double nextTime = 0;

    // Playback
    std::vector<std::string> parts;
    size_t part = 0;
    size_t row = 0;
    std::unique_ptr<JournalPartReader> reader;
    RigidBodyPtrVector shown;                       ///< by the place in the reader's part
    ParticleSystems shownSystems;                   ///< the same
    std::map<std::string, ref_ptr<RigidBody>> made; ///< bodies that playback brought, by key
    bool playing = false;

    void open(Hdf5Handle handle, std::string const& name);
    void beginPart(hyxSDK::Simulation& simulation);
    void show(hyxSDK::Simulation& simulation);
    void findBodies(hyxSDK::Simulation& simulation);
    void findParticleSystems(hyxSDK::Simulation& simulation);
};

Journal::Journal() : m_implementation(std::make_unique<Implementation>()) {}

Journal::~Journal() {
    try {
        close();
    } catch (std::exception const&) { // nobody is left to tell
    }
}

void Journal::record(std::string const& path, std::string const& session, Settings const& settings, bool append) {
    close();
    auto next = std::make_unique<Implementation>();
    bool const extends = append && std::filesystem::exists(path);
    next->file = extends ? openHdf5File(path, true) : createHdf5File(path);
    next->path = path;
    next->sessionName = session.empty() ? nextSessionName(next->file) : session;
    if (hasHdf5Link(next->file, next->sessionName))
        throw std::runtime_error("the journal '" + path + "' has a session '" + next->sessionName + "' already");
    next->session = createHdf5Group(next->file, next->sessionName);
    next->settings = settings;
    m_implementation = std::move(next);
}

void Journal::play(std::string const& path, std::string const& session) {
    auto next = std::make_unique<Implementation>();
    close();
    next->file = openHdf5File(path, false);
    std::vector<std::string> const sessions = listHdf5Groups(next->file);
    if (sessions.empty())
        throw std::runtime_error("the journal '" + path + "' has no sessions");
    next->path = path;
    next->sessionName = session.empty() ? sessions.front() : session;
    if (!hasHdf5Link(next->file, next->sessionName))
        throw std::runtime_error("the journal '" + path + "' has no session '" + next->sessionName + "'");
    next->session = openHdf5Group(next->file, next->sessionName);
    next->parts = listHdf5Groups(next->session);
    for (std::string const& part : next->parts)
        next->numStates += JournalPartReader(next->session, part).numStates();
    next->playing = true;
    m_implementation = std::move(next);
}

void Journal::close() {
    if (m_implementation->writer)
        m_implementation->writer->flush();
    m_implementation = std::make_unique<Implementation>();
}

bool Journal::isRecording() const {
    return m_implementation->session && !m_implementation->playing;
}

bool Journal::isPlaying() const {
    return m_implementation->playing;
}

std::string Journal::getPath() const {
    return m_implementation->path;
}

std::string Journal::getSessionName() const {
    return m_implementation->sessionName;
}

size_t Journal::getNumStates() const {
    return m_implementation->numStates;
}

void Journal::store(hyxSDK::Simulation* simulation, bool force) {
    if (!simulation || !isRecording())
        return;
    double const time = simulation->getTimeStamp();
    double const slack = 1e-6 * simulation->getTimeStep(); // the sum of many steps is never exact
    if (!force && m_implementation->settings.frequency > 0 && m_implementation->writer &&
        time < m_implementation->nextTime - slack)
        return;
    bool const changed =
        m_implementation->settings.incremental && m_implementation->writer &&
        !m_implementation->writer->covers(simulation->getRigidBodies(), particleSystemsOf(*simulation));
    if (!m_implementation->writer || changed)
        m_implementation->beginPart(*simulation);
    m_implementation->writer->store(time);
    ++m_implementation->numStates;
    if (m_implementation->settings.frequency > 0)
        m_implementation->nextTime =
            std::max(m_implementation->nextTime, time - 1 / m_implementation->settings.frequency) +
            1 / m_implementation->settings.frequency;
}

void Journal::Implementation::beginPart(hyxSDK::Simulation& simulation) {
    if (writer)
        writer->flush();
    else
        nextTime = simulation.getTimeStamp();
    RigidBodyPtrVector const bodies = simulation.getRigidBodies();
    Hdf5Storage const storage{.single = settings.single, .compressed = settings.compressed};
    writer = std::make_unique<JournalPartWriter>(session, partName(numParts++), bodies, keys.of(bodies),
                                                 particleSystemsOf(simulation), storage, settings.velocities);
}

bool Journal::playNext(hyxSDK::Simulation* simulation) {
    if (!simulation || !isPlaying())
        return false;
    while (!m_implementation->reader || m_implementation->row >= m_implementation->reader->numStates()) {
        if (m_implementation->part >= m_implementation->parts.size())
            return false;
        m_implementation->reader = std::make_unique<JournalPartReader>(
            m_implementation->session, m_implementation->parts[m_implementation->part++]);
        m_implementation->row = 0;
        if (m_implementation->reader->numStates() == 0)
            continue;
        m_implementation->findBodies(*simulation);
        m_implementation->findParticleSystems(*simulation);
    }
    m_implementation->show(*simulation);
    ++m_implementation->row;
    return true;
}

void Journal::Implementation::findBodies(hyxSDK::Simulation& simulation) {
    RigidBodyPtrVector const present = simulation.getRigidBodies();
    std::map<std::string, ref_ptr<RigidBody>> known;
    std::vector<std::string> const presentKeys = JournalKeys().of(present);
    for (size_t i = 0; i < present.size(); ++i)
        known.emplace(presentKeys[i], present[i]);
    for (auto const& [key, body] : made)
        known[key] = body;

    shown.clear();
    std::map<std::string, ref_ptr<RigidBody>> needed;
    for (size_t i = 0; i < reader->keys().size(); ++i) {
        std::string const& key = reader->keys()[i];
        auto const found = known.find(key);
        ref_ptr<RigidBody> const body = found != known.end() ? found->second : reader->makeBody(i);
        if (found == known.end() || made.contains(key))
            needed[key] = body;
        shown.push_back(body);
    }
    for (auto const& [key, body] : made)
        if (!needed.contains(key))
            simulation.remove(body.get());
    for (auto const& [key, body] : needed)
        simulation.add(body.get());
    made = std::move(needed);
}

/// They have no names: the first is the first. Those that are missing are made, and stay when the journal ends.
void Journal::Implementation::findParticleSystems(hyxSDK::Simulation& simulation) {
    shownSystems = particleSystemsOf(simulation);
    while (shownSystems.size() < reader->particles().numSystems()) {
        shownSystems.push_back(new ParticleSystem);
        simulation.add(shownSystems.back().get());
    }
    shownSystems.resize(reader->particles().numSystems());
}

void Journal::Implementation::show(hyxSDK::Simulation& simulation) {
    JournalPartReader::State const state = reader->read(row);
    for (size_t i = 0; i < shown.size(); ++i) {
        double const *p = &state.positions[3 * i], *q = &state.rotations[4 * i];
        shown[i]->setPosition(Vec3(p[0], p[1], p[2]));
        shown[i]->setRotation(Quat(q[0], q[1], q[2], q[3]));
        if (shown[i]->getMotionControl() == RigidBody::STATIC)
            continue;
        auto const vector = [i](std::vector<double> const& list) {
            return list.empty() ? Vec3() : Vec3(list[3 * i], list[3 * i + 1], list[3 * i + 2]);
        };
        shown[i]->setVelocity(vector(state.velocities));
        shown[i]->setAngularVelocity(vector(state.angularVelocities));
    }
    reader->particles().show(row, shownSystems);
    simulation.setTimeStamp(state.time);
}

std::vector<std::string> Journal::listSessions(std::string const& path) {
    return listHdf5Groups(openHdf5File(path, false));
}

} // namespace hyx
