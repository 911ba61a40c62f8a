// A session while it is recorded, and its way into the journal.
#pragma once

#include "platform/hyx/journal/journal.h"
#include "reference/hyx/journal/journal_log.h"
#include "reference/hyx/journal/recorded_bodies.h"

#include <sys/types.h>

#include <filesystem>
#include <optional>
#include <span>
#include <string>

namespace hyx {

/// Records to a log beside the journal. The log becomes a session of the journal when it is finished; where that does
/// not happen, because the process was killed or the disk is full, it stays for `recoverSession`.
class SessionRecorder {
public:
    /// Makes no difference to the journal yet. With `append` its sessions will stay.
    SessionRecorder(std::filesystem::path const& journal, std::string const& session, Journal::Settings const& settings,
                    bool append);

    /// Whether a state was due, and recorded.
    bool store(hyxSDK::Simulation& simulation, bool force);

    /// Nothing can be recorded after it, whether it succeeds or throws.
    void finish();

private:
    void beginPart(hyxSDK::Simulation& simulation);
    void append(JournalLog::Kind kind, std::span<char const> content);

    std::filesystem::path m_journal;
    Journal::Settings m_settings;
    pid_t m_process;
    JournalLog m_log;
    JournalKeys m_keys;
    std::optional<RecordedBodies> m_bodies; ///< none before the first state
    double m_nextTime = 0;
    bool m_hasStates = false;
    bool m_failed = false; ///< to append the last record
};

/// Makes a log that was left behind part of the journal. Nothing for a journal that has none, or is being recorded.
void recoverSession(std::filesystem::path const& journal);

} // namespace hyx
