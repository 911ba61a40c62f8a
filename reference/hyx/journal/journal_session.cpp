// From the simulation into the log, from the log into the journal.
#include "reference/hyx/journal/journal_session.h"

#include "reference/hyx/journal/journal_file.h"
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

/// The first record of a log; null where it has none.
json planOf(JournalLog& log) {
    Kind kind;
    std::string content;
    log.rewind();
    if (!log.next(kind, content) || kind != Kind::SESSION)
        return nullptr;
    return json::parse(content, nullptr, false);
}

void makeJournal(JournalLog& log, json const& plan, std::filesystem::path const& journal) {
    bool const extends = plan.at("append").get<bool>() && std::filesystem::exists(journal);
    // Killed between the two, an earlier attempt left a finished journal and its log.
    if (!extends || !journalFormat().open(journal)->hasSession(plan.at("session").get<std::string>())) {
        NewFile file(journal);
        std::string const path = file.temporaryPath().string();
        if (extends)
            std::filesystem::copy_file(journal, path, std::filesystem::copy_options::overwrite_existing);
        journalFormat().addSession(log, plan, path, extends);
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
