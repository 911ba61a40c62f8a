// The application's journal and profiling.
#include "platform/hyxOSG/visuals/create_visual.h"
#include "reference/hyxOSG/application/application_implementation.h"
#include "reference/hyxOSG/application/recorded_look.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <utility>

namespace hyxOSG {
namespace {

enum JournalFormat : hyx::UInt { PLAIN = 0, COMPRESSED = 1 };

/// `run.h5#first` is the session `first` of the file `run.h5`.
struct JournalPath {
    explicit JournalPath(std::string const& path)
        : file(path.substr(0, path.find('#'))),
          session(path.find('#') == std::string::npos ? "" : path.substr(path.find('#') + 1)) {}

    std::string file;
    std::string session;
};

/// What the configuration file says goes over the settings; a file that cannot be read is refused.
void configure(std::string const& path, hyx::Journal::Settings& settings, std::string& session) {
    if (path.empty())
        return;
    std::ifstream file(path);
    nlohmann::json const choice = nlohmann::json::parse(file, nullptr, false);
    if (!choice.is_object())
        throw std::runtime_error("the journal configuration '" + path + "' is no JSON object");
    try {
        settings.velocities = choice.value("velocities", settings.velocities);
        settings.contacts = choice.value("contacts", settings.contacts);
        settings.frequency = choice.value("frequency", settings.frequency);
        session = choice.value("session", session);
    } catch (nlohmann::json::exception const& error) {
        throw std::runtime_error("the journal configuration '" + path + "': " + error.what());
    }
}

} // namespace

hyx::Journal* ExampleApplication::getJournal() {
    return m_implementation->journal.get();
}

std::string ExampleApplication::getJournalConfigurationPath() const {
    return m_implementation->journalConfigurationPath;
}

std::string ExampleApplication::getJournalPlaybackPath() const {
    return m_implementation->journalPlaybackPath;
}

std::string ExampleApplication::getProfilingJournalPath() const {
    return m_implementation->profiler.path();
}

void ExampleApplication::setJournalConfigurationPath(hyx::String const& path) {
    m_implementation->journalConfigurationPath = path;
}

void ExampleApplication::setJournalRecordPath(hyx::String const& path) {
    m_implementation->journalRecordPath = path;
}

void ExampleApplication::setEnableJournalIncrementalStructure(bool enable) {
    m_implementation->journalSettings.incremental = enable;
}

bool ExampleApplication::getEnableJournalIncrementalStructure() const {
    return m_implementation->journalSettings.incremental;
}

hyx::UInt ExampleApplication::getJournalFormat() const {
    return m_implementation->journalSettings.compressed ? COMPRESSED : PLAIN;
}

void ExampleApplication::setJournalFormat(hyx::UInt format) {
    if (format != PLAIN && format != COMPRESSED)
        throw std::invalid_argument(
            "a journal's format is 0 (HDF5) or 1 (compressed HDF5); formats of other programs are not written");
    m_implementation->journalSettings.compressed = format == COMPRESSED;
}

void ExampleApplication::setEnableJournal32bitMode(bool enable) {
    m_implementation->journalSettings.single = enable;
}

void ExampleApplication::setEnableJournalRecord(bool enable) {
    if (enable == m_implementation->journal->isRecording())
        return;
    if (enable)
        initRecordJournal();
    else
        m_implementation->journal->close();
}

void ExampleApplication::setRequestedJournalFrequency(double frequency) {
    if (!(frequency >= 0) || !std::isfinite(frequency))
        throw std::invalid_argument("the journal frequency must be 0 or a positive number");
    m_implementation->journalSettings.frequency = frequency;
}

void ExampleApplication::storeInitialJournalState() {
    if (m_implementation->journal->isRecording())
        m_implementation->journal->store(&m_implementation->ensureSimulation(), true);
}

void ExampleApplication::initRecordJournal() {
    m_implementation->startRecording(false);
}

void ExampleApplication::initAppendJournal() {
    m_implementation->startRecording(true);
}

void ExampleApplication::Implementation::recordNextScene() {
    if (!journal->isRecording() || journal->getNumStates() == 0)
        return; // a session that has not begun is that of the next scene
    std::string const file = journal->getPath();
    JournalPath const path(journalRecordPath);
    journal->close();
    std::string const session = path.session.empty() ? "" : path.session + "_" + std::to_string(++recordedScenes + 1);
    journal->record(file, session, recordingSettings().first, true);
}

std::pair<hyx::Journal::Settings, std::string> ExampleApplication::Implementation::recordingSettings() {
    std::pair<hyx::Journal::Settings, std::string> chosen{journalSettings, JournalPath(journalRecordPath).session};
    configure(journalConfigurationPath, chosen.first, chosen.second);
    chosen.first.describe = [this](hyx::RigidBodyPtrVector const& bodies) { return describeLook(owner, bodies); };
    return chosen;
}

void ExampleApplication::Implementation::startRecording(bool append) {
    if (journalRecordPath.empty())
        throw std::runtime_error("there is no file to record to: call setJournalRecordPath first");
    auto const [settings, session] = recordingSettings();
    recordedScenes = 0;
    journal->record(JournalPath(journalRecordPath).file, session, settings, append);
}

void ExampleApplication::journalPlayback() {
    std::string const& chosen = m_implementation->journalPlaybackPath;
    JournalPath const path(chosen.empty() ? m_implementation->journalRecordPath : chosen);
    if (path.file.empty())
        throw std::runtime_error("there is no journal to play back: call setJournalRecordPath first");
    m_implementation->journal->play(path.file, path.session);
    m_implementation->journalPlaybackPath = chosen.empty() ? m_implementation->journalRecordPath : chosen;
    m_implementation->playedTime = m_implementation->journal->getStartTime();
    m_implementation->playsFirst = true;
    m_implementation->pacer.restart();
}

void ExampleApplication::setEnableJournalLoop(bool enable) {
    m_implementation->journalLoop = enable;
}

bool ExampleApplication::getEnableJournalLoop() const {
    return m_implementation->journalLoop;
}

void ExampleApplication::Implementation::playStep(ExampleApplication& application) {
    double const wanted = playedTime + simulation->getTimeStep();
    // In real time a step is one of recorded time, whatever rate was recorded; else each frame shows a state.
    bool const byTime = pacer.realTimeSync() && !playsFirst;
    bool const shown = byTime ? playedTime < journal->getEndTime() &&
                                    playFrom([&] { return journal->playAt(simulation.get(), wanted); })
                              : playFrom([&] { return journal->playNext(simulation.get()); });
    if (shown)
        playedTime = byTime ? wanted : playedTime;
    else if (journalLoop)
        playFrom([&] { return journal->playAt(simulation.get(), journal->getStartTime()); });
    else
        application.setAutoStepping(false);
}

bool ExampleApplication::Implementation::playFrom(std::function<bool()> const& move) {
    bool brought = false;
    auto const draw = hyxSDK::Simulation::BodyEvent::CallbackType([&](hyx::RigidBody* body) {
        hyxOSG::createVisual(body, graph.libraryRoot());
        brought = true;
    });
    hyx::ref_ptr<hyxSDK::Simulation> const shown = simulation;
    shown->getBodyAddedEvent().add(draw);
    bool moved = false;
    try {
        moved = move();
    } catch (...) {
        shown->getBodyAddedEvent().remove(draw);
        throw;
    }
    shown->getBodyAddedEvent().remove(draw);
    if (moved)
        playedTime = simulation->getTimeStamp();
    if (brought)
        applyColors(journal->getDescription(), journal->getShownBodies(), *graph.libraryRoot());
    if (moved && std::exchange(playsFirst, false) && !presentScene) {
        applyPicture(journal->getDescription(), owner, !homeSet);
        if (window && !homeSet && journal->getDescription().empty())
            owner.fitSceneIntoView();
    }
    return moved;
}

void ExampleApplication::listSessionNames(std::string const& fileName) {
    for (std::string const& name : hyx::Journal::listSessions(fileName))
        std::printf("%s\n", name.c_str());
    std::fflush(stdout);
}

void ExampleApplication::setEnableThreadTimeline(bool enable) {
    m_implementation->profiler.setTimeline(enable);
}

void ExampleApplication::setEnableTaskProfile(bool enable) {
    m_implementation->profiler.setTaskProfile(enable);
}

void ExampleApplication::setEnableSimulationDump(bool enable) {
    m_implementation->simulationDump.setEnable(enable);
}

bool ExampleApplication::getEnableSimulationDump() const {
    return m_implementation->simulationDump.enabled();
}

} // namespace hyxOSG
