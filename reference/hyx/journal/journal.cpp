// Sessions: recording and playback.
#include "platform/hyx/journal/journal.h"

#include "platform/hyx/objects/notify.h"
#include "platform/hyxCollide/space.h"
#include "platform/hyxSDK/simulation.h"
#include "reference/hyx/journal/contact_rows.h"
#include "reference/hyx/journal/journal_file.h"
#include "reference/hyx/journal/journal_session.h"
#include "reference/machinery/files/exit_work.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <map>
#include <optional>
#include <stdexcept>

namespace hyx {
namespace {

void warn(std::string const& text) {
    Notify::instance().notify(Notify::NOTIFY_WARNING, text);
}

/// The name given, or the first `session_` with a number that is free; the file's sessions when it will be extended.
std::string freeSessionName(std::string const& session, std::string const& path, bool extends) {
    JournalFormat const& format = journalFormat(); // what it lacks is learned before anything is recorded
    std::unique_ptr<JournalFile> const file = extends ? format.open(path) : nullptr;
    auto const isTaken = [&](std::string const& name) { return file && file->hasSession(name); };
    if (session.find('/') != std::string::npos || session == ".")
        throw std::invalid_argument("'" + session + "' is no name for a session of a journal");
    if (isTaken(session))
        throw std::runtime_error("the journal '" + path + "' has a session '" + session + "' already");
    std::string name = session;
    for (size_t number = 1; name.empty() || isTaken(name); ++number)
        name = "session_" + std::to_string(number);
    return name;
}

} // namespace

struct Journal::Implementation {
    using BodiesByKey = std::map<std::string, ref_ptr<RigidBody>>;

    std::string path;
    std::string sessionName;
    size_t numStates = 0;
    std::unique_ptr<SessionRecorder> recorder; ///< null unless recording

    // Playback
    std::unique_ptr<JournalFile> file;

    struct Part {
        std::string name;
        size_t numStates;
        double start, end; ///< simulated seconds
    };

    std::vector<Part> parts;
    size_t part = 0;
    size_t row = 0;
    bool warned = false;       ///< of damage in the reader's part
    std::optional<UInt> found; ///< the structure in which the objects of the reader's part were found
    std::unique_ptr<JournalPartReader> reader;
    RigidBodyPtrVector shown;             ///< by the place in the reader's part
    ParticleSystems shownSystems;         ///< the same
    BodiesByKey made;                     ///< bodies that playback brought, by key
    ConstraintPtrVector madeJoints;       ///< joints that playback brought
    std::map<std::string, double> joints; ///< positions in the state that is shown
    bool playing = false;

    void findParts();
    void openPart();
    /// Opens a part, unless it is open.
    void goTo(size_t wanted);
    std::optional<JournalPartReader::State> readState();
    bool findObjects(hyxSDK::Simulation& simulation);
    void show(JournalPartReader::State const& state, hyxSDK::Simulation& simulation);
    void passOver(std::string const& place, std::exception const& failure);
    BodiesByKey findBodies(hyxSDK::Simulation const& simulation);
    void bringBodies(hyxSDK::Simulation& simulation, BodiesByKey needed);
    void bringJoints(hyxSDK::Simulation& simulation, ConstraintPtrVector const& joints);
    void findParticleSystems(hyxSDK::Simulation& simulation);
};

Journal::Journal() : m_implementation(std::make_unique<Implementation>()) {}

Journal::~Journal() {
    try {
        close();
    } catch (std::exception const& failure) { // nobody is left to raise it to
        std::fprintf(stderr, "%s\n", failure.what());
    }
}

void Journal::record(std::string const& path, std::string const& session, Settings const& settings, bool append) {
    close();
    recoverSession(path);
    auto next = std::make_unique<Implementation>();
    next->path = path;
    next->sessionName = freeSessionName(session, path, append && std::filesystem::exists(path));
    next->recorder = std::make_unique<SessionRecorder>(path, next->sessionName, settings, append);
    m_implementation = std::move(next);
    // An application lives until the process ends; then its journal still becomes one that other programs can read.
    setExitWork(this, [this] { close(); });
}

void Journal::play(std::string const& path, std::string const& session) {
    auto next = std::make_unique<Implementation>();
    close();
    std::vector<std::string> const sessions = listSessions(path);
    if (sessions.empty())
        throw std::runtime_error("the journal '" + path + "' has no sessions");
    next->file = journalFormat().open(path);
    next->path = path;
    next->sessionName = session.empty() ? sessions.front() : session;
    if (!next->file->hasSession(next->sessionName))
        throw std::runtime_error("the journal '" + path + "' has no session '" + next->sessionName + "'");
    next->findParts();
    next->playing = true;
    m_implementation = std::move(next);
}

/// Parts that cannot be read are passed over, unless that leaves none.
void Journal::Implementation::findParts() {
    std::string reason;
    for (std::string const& name : file->listParts(sessionName)) {
        try {
            auto const part = file->openPart(sessionName, name);
            size_t const states = part->numStates();
            numStates += states;
            if (states > 0)
                parts.push_back({name, states, part->time(0), part->time(states - 1)});
        } catch (std::runtime_error const& failure) {
            passOver(name, failure);
            reason = failure.what();
        }
    }
    if (parts.empty() && !reason.empty())
        throw std::runtime_error(reason);
}

void Journal::Implementation::passOver(std::string const& place, std::exception const& failure) {
    warn("the journal '" + path + "' is damaged, and '" + sessionName + "/" + place +
         "' passed over: " + failure.what());
}

void Journal::close() {
    std::unique_ptr<Implementation> const ended = std::exchange(m_implementation, std::make_unique<Implementation>());
    setExitWork(this, {});
    if (ended->recorder)
        ended->recorder->finish();
}

bool Journal::isRecording() const {
    return m_implementation->recorder != nullptr;
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
    if (simulation && isRecording() && m_implementation->recorder->store(*simulation, force))
        ++m_implementation->numStates;
}

bool Journal::playNext(hyxSDK::Simulation* simulation) {
    if (!simulation || !isPlaying())
        return false;
    for (;;) {
        while (!m_implementation->reader || m_implementation->row >= m_implementation->reader->numStates()) {
            if (m_implementation->part >= m_implementation->parts.size())
                return false;
            m_implementation->openPart();
        }
        std::optional<JournalPartReader::State> const state = m_implementation->readState();
        ++m_implementation->row;
        if (state && m_implementation->findObjects(*simulation)) {
            m_implementation->show(*state, *simulation);
            return true;
        }
    }
}

bool Journal::playAt(hyxSDK::Simulation* simulation, double time) {
    Implementation& self = *m_implementation;
    if (!simulation || !isPlaying() || self.parts.empty())
        return false;
    double const slack = 1e-9 * (1 + std::abs(time)); // the sum of many steps is never exact
    size_t wanted = 0;
    while (wanted + 1 < self.parts.size() && self.parts[wanted + 1].start <= time + slack)
        ++wanted;
    self.goTo(wanted);
    if (self.reader)
        self.row = self.reader->rowAt(time + slack);
    return playNext(simulation);
}

bool Journal::playRelative(hyxSDK::Simulation* simulation, int states) {
    Implementation& self = *m_implementation;
    if (!simulation || !isPlaying() || self.parts.empty())
        return false;
    auto place = std::ptrdiff_t(self.row) - 1 + states; // the row shown is the one before the next
    size_t wanted = self.part > 0 ? self.part - 1 : 0;
    for (; place < 0 && wanted > 0; --wanted)
        place += std::ptrdiff_t(self.parts[wanted - 1].numStates);
    for (; wanted + 1 < self.parts.size() && place >= std::ptrdiff_t(self.parts[wanted].numStates); ++wanted)
        place -= std::ptrdiff_t(self.parts[wanted].numStates);
    self.goTo(wanted);
    self.row = size_t(std::clamp(place, std::ptrdiff_t(0), std::ptrdiff_t(self.parts[wanted].numStates) - 1));
    return playNext(simulation);
}

double Journal::getStartTime() const {
    return m_implementation->parts.empty() ? 0 : m_implementation->parts.front().start;
}

double Journal::getEndTime() const {
    return m_implementation->parts.empty() ? 0 : m_implementation->parts.back().end;
}

std::string Journal::getDescription() const {
    return m_implementation->reader ? m_implementation->reader->description() : "";
}

std::string Journal::getConditions() const {
    return m_implementation->reader ? m_implementation->reader->conditions() : "";
}

RigidBodyPtrVector Journal::getShownBodies() const {
    return m_implementation->shown;
}

std::map<std::string, double> Journal::getJointPositions() const {
    return m_implementation->joints;
}

void Journal::Implementation::goTo(size_t wanted) {
    if (reader && part == wanted + 1)
        return;
    part = wanted;
    openPart();
}

/// Leaves no reader where the next part is damaged.
void Journal::Implementation::openPart() {
    std::string const& name = parts[part++].name;
    row = 0;
    warned = false;
    found.reset();
    reader = nullptr;
    try {
        reader = file->openPart(sessionName, name);
    } catch (std::runtime_error const& failure) {
        passOver(name, failure);
    }
}

/// Nothing for a damaged state, of which the first in a part is told.
std::optional<JournalPartReader::State> Journal::Implementation::readState() {
    try {
        return reader->read(row);
    } catch (std::runtime_error const& failure) {
        if (!std::exchange(warned, true))
            passOver(parts[part - 1].name, failure);
        return std::nullopt;
    }
}

/// The bodies, joints and particle systems of the part, unless they are there still; false where they cannot be made,
/// which ends the part.
bool Journal::Implementation::findObjects(hyxSDK::Simulation& simulation) {
    if (found == simulation.getStructureRevision())
        return true;
    try {
        BodiesByKey needed = findBodies(simulation);
        ConstraintPtrVector const joints = reader->makeJoints(shown);
        bringBodies(simulation, std::move(needed));
        bringJoints(simulation, joints);
    } catch (std::runtime_error const& failure) {
        passOver(parts[part - 1].name, failure);
        reader = nullptr;
        return false;
    }
    findParticleSystems(simulation);
    found = simulation.getStructureRevision();
    return true;
}

/// Fills `shown`. Gives those of them that are the journal's own.
Journal::Implementation::BodiesByKey Journal::Implementation::findBodies(hyxSDK::Simulation const& simulation) {
    RigidBodyPtrVector const present = simulation.getRigidBodies();
    BodiesByKey known;
    std::vector<std::string> const presentKeys = JournalKeys().of(present);
    for (size_t i = 0; i < present.size(); ++i)
        known.emplace(presentKeys[i], present[i]);
    known.insert(made.begin(), made.end()); // a scene may have been built since, which has bodies of its own

    shown.clear();
    BodiesByKey needed;
    for (size_t i = 0; i < reader->keys().size(); ++i) {
        std::string const& key = reader->keys()[i];
        auto const found = known.find(key);
        ref_ptr<RigidBody> const body = found != known.end() ? found->second : reader->makeBody(i);
        auto const brought = made.find(key);
        if (found == known.end() || (brought != made.end() && brought->second == body))
            needed[key] = body;
        shown.push_back(body);
    }
    return needed;
}

void Journal::Implementation::bringBodies(hyxSDK::Simulation& simulation, BodiesByKey needed) {
    for (auto const& [key, body] : made)
        if (!needed.contains(key))
            simulation.remove(body.get());
    for (auto const& [key, body] : needed)
        simulation.add(body.get());
    made = std::move(needed);
}

/// A joint is there already where one of the same name holds the same bodies.
void Journal::Implementation::bringJoints(hyxSDK::Simulation& simulation, ConstraintPtrVector const& joints) {
    for (auto const& joint : std::exchange(madeJoints, {}))
        simulation.remove(joint.get());
    ConstraintPtrVector const present = simulation.getConstraints();
    for (auto const& joint : joints) {
        bool const known = std::ranges::any_of(present, [&](auto const& other) {
            return other->getBodyAt(0) == joint->getBodyAt(0) && other->getBodyAt(1) == joint->getBodyAt(1) &&
                   other->getName() == joint->getName();
        });
        if (known)
            continue;
        simulation.add(joint.get());
        madeJoints.push_back(joint);
    }
}

/// They have no names: the first is the first. Those that are missing are made, and stay when the journal ends.
void Journal::Implementation::findParticleSystems(hyxSDK::Simulation& simulation) {
    shownSystems = particleSystemsOf(simulation);
    while (shownSystems.size() < reader->numSystems()) {
        shownSystems.push_back(new ParticleSystem);
        simulation.add(shownSystems.back().get());
    }
    shownSystems.resize(reader->numSystems());
}

void Journal::Implementation::show(JournalPartReader::State const& state, hyxSDK::Simulation& simulation) {
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
    for (size_t i = 0; i < shownSystems.size(); ++i)
        shownSystems[i]->getParticles() = state.grains[i];
    joints = state.joints;
    simulation.getSpace()->showContacts(contactsOf(state.contacts, shown));
    simulation.setTimeStamp(state.time);
}

std::vector<std::string> Journal::listSessions(std::string const& path) {
    try {
        recoverSession(path);
    } catch (std::exception const& failure) {
        if (!std::filesystem::exists(path))
            throw;
        warn(failure.what());
    }
    return journalFormat().open(path)->listSessions();
}

} // namespace hyx
