// The application's journal and profiling.
#include "reference/hyxOSG/application/application_implementation.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <stdexcept>

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

void ExampleApplication::Implementation::startRecording(bool append) {
    if (journalRecordPath.empty())
        throw std::runtime_error("there is no file to record to: call setJournalRecordPath first");
    JournalPath path(journalRecordPath);
    hyx::Journal::Settings settings = journalSettings;
    configure(journalConfigurationPath, settings, path.session);
    journal->record(path.file, path.session, settings, append);
}

void ExampleApplication::journalPlayback() {
    std::string const& chosen = m_implementation->journalPlaybackPath;
    JournalPath const path(chosen.empty() ? m_implementation->journalRecordPath : chosen);
    if (path.file.empty())
        throw std::runtime_error("there is no journal to play back: call setJournalRecordPath first");
    m_implementation->journal->play(path.file, path.session);
    m_implementation->journalPlaybackPath = chosen.empty() ? m_implementation->journalRecordPath : chosen;
    m_implementation->pacer.restart();
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
