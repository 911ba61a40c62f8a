// From the simulation into the log, from the log into the journal.
#include "reference/hyx/journal/journal_session.h"

#include "reference/hyx/journal/journal_part.h"
#include "reference/machinery/files/whole_file.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <system_error>

namespace hyx {
namespace {

using nlohmann::json;
using Kind = JournalLog::Kind;

std::filesystem::path logOf(std::filesystem::path journal) {
    return journal += ".log";
}

std::string textOf(json const& content) {
    return content.dump(-1, ' ', false, json::error_handler_t::replace);
}

std::string partName(size_t number) {
    char name[24];
    std::snprintf(name, sizeof name, "part_%06zu", number);
    return name;
}

/// Copies the records behind the first into a session. What does not fit together ends it, as does the end of the log.
void copyRecords(JournalLog& log, hid_t session, Hdf5Storage storage) {
    std::unique_ptr<JournalPartWriter> part;
    size_t numParts = 0;
    Kind kind;
    std::string content;
    while (log.next(kind, content)) {
        if (kind == Kind::PART) {
            if (part)
                part->flush();
            part = std::make_unique<JournalPartWriter>(session, partName(numParts++), json::parse(content), storage);
        } else if (kind == Kind::STATE && part) {
            std::vector<double> numbers(content.size() / sizeof(double));
            std::memcpy(numbers.data(), content.data(), numbers.size() * sizeof(double));
            part->store(numbers);
        }
    }
    if (part)
        part->flush();
}

/// Adds the session to an HDF5 file, in which HDF5 has nothing left to write afterwards.
void addSession(JournalLog& log, json const& plan, Hdf5Handle file) {
    try {
        Hdf5Storage const storage{.single = plan.at("single").get<bool>(),
                                  .compressed = plan.at("compressed").get<bool>()};
        Hdf5Handle session = createHdf5Group(file, plan.at("session").get<std::string>());
        copyRecords(log, session, storage);
        session.close(unwritten);
        requireHdf5(H5Fflush(file, H5F_SCOPE_GLOBAL) >= 0, unwritten);
    } catch (...) {
        discardHdf5File(file);
        throw;
    }
    file.close(unwritten);
}

/// The first record of a log; null where it has none.
json planOf(JournalLog& log) {
    Kind kind;
    std::string content;
    log.rewind();
    if (!log.next(kind, content) || kind != Kind::SESSION)
        return nullptr;
    return json::parse(content, nullptr, false);
}

bool hasSession(std::filesystem::path const& journal, std::string const& session) {
    return hasHdf5Link(openHdf5File(journal.string(), false), session);
}

void makeJournal(JournalLog& log, json const& plan, std::filesystem::path const& journal) {
    bool const extends = plan.at("append").get<bool>() && std::filesystem::exists(journal);
    // Killed between the two, an earlier attempt left a finished journal and its log.
    if (!extends || !hasSession(journal, plan.at("session").get<std::string>())) {
        NewFile file(journal);
        std::string const path = file.temporaryPath().string();
        if (extends)
            std::filesystem::copy_file(journal, path, std::filesystem::copy_options::overwrite_existing);
        addSession(log, plan, extends ? openHdf5File(path, true) : createHdf5File(path));
        file.commit();
    }
    log.remove();
}

void finishLog(JournalLog& log, std::filesystem::path const& journal) {
    json const plan = planOf(log);
    std::string const text = "what was recorded stays in the log of the journal, which cannot be written";
    try {
        plan.is_object() ? makeJournal(log, plan, journal) : log.remove();
    } catch (std::system_error const& failure) {
        throw std::filesystem::filesystem_error(text, journal, logOf(journal), failure.code());
    } catch (std::exception const& failure) {
        throw std::runtime_error(text + ": '" + journal.string() + "': " + failure.what());
    }
}

/// Not to learn it only when everything is recorded.
void requireWritable(std::filesystem::path const& journal) {
    int const reason = std::filesystem::is_directory(journal)                                   ? EISDIR
                       : std::filesystem::exists(journal) && access(journal.c_str(), W_OK) != 0 ? errno
                                                                                                : 0;
    if (reason)
        throw std::filesystem::filesystem_error("cannot record the journal", journal,
                                                std::error_code(reason, std::generic_category()));
}

} // namespace

SessionRecorder::SessionRecorder(std::filesystem::path const& journal, std::string const& session,
                                 Journal::Settings const& settings, bool append)
    : m_journal(journal), m_settings(settings), m_process(getpid()) {
    requireWritable(journal);
    m_log = JournalLog::create(logOf(journal));
    json const plan = {
        {"session", session}, {"append", append}, {"single", settings.single}, {"compressed", settings.compressed}};
    m_log.append(Kind::SESSION, textOf(plan));
}

void SessionRecorder::append(JournalLog::Kind kind, std::span<char const> content) {
    m_failed = true;
    m_log.append(kind, content);
    m_failed = false;
}

bool SessionRecorder::store(hyxSDK::Simulation& simulation, bool force) {
    double const time = simulation.getTimeStamp();
    double const slack = 1e-6 * simulation.getTimeStep(); // the sum of many steps is never exact
    double const frequency = m_settings.frequency;
    if (!force && frequency > 0 && m_bodies && time < m_nextTime - slack)
        return false;
    bool const changed = m_settings.incremental && m_bodies &&
                         !m_bodies->covers(simulation.getRigidBodies(), particleSystemsOf(simulation));
    if (!m_bodies || changed)
        beginPart(simulation);
    std::vector<double> const& state = m_bodies->state(time);
    append(Kind::STATE, {reinterpret_cast<char const*>(state.data()), state.size() * sizeof(double)});
    m_hasStates = true;
    if (frequency > 0)
        m_nextTime = std::max(m_nextTime, time - 1 / frequency) + 1 / frequency;
    return true;
}

void SessionRecorder::beginPart(hyxSDK::Simulation& simulation) {
    if (!m_bodies)
        m_nextTime = simulation.getTimeStamp();
    RigidBodyPtrVector const bodies = simulation.getRigidBodies();
    RecordedBodies next(simulation, m_settings);
    json description = next.describe(m_keys.of(bodies));
    if (m_settings.describe)
        description["description"] = m_settings.describe(bodies);
    append(Kind::PART, textOf(description));
    m_bodies = std::move(next);
}

void SessionRecorder::finish() {
    JournalLog log = std::move(m_log);
    if (getpid() != m_process)
        return; // a forked copy leaves the journal to the process that records it
    if (m_failed && !m_hasStates)
        return log.remove(); // nothing was recorded that could take the place of an earlier journal
    finishLog(log, m_journal);
}

void recoverSession(std::filesystem::path const& journal) {
    if (JournalLog log = JournalLog::open(logOf(journal)))
        finishLog(log, journal);
}

} // namespace hyx
