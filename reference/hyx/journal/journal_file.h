// A journal as a file, by a library that is loaded with the first journal: it would cost every start 6 ms.
#pragma once

#include "reference/hyx/journal/journal_log.h"
#include "reference/hyx/journal/journal_part.h"

#include <nlohmann/json.hpp>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace hyx {

/// An open journal. What is damaged throws std::runtime_error.
class JournalFile {
public:
    virtual ~JournalFile() = default;

    /// Whether the name is taken.
    virtual bool hasSession(std::string const& name) const = 0;
    /// In the order recorded.
    virtual std::vector<std::string> listSessions() const = 0;
    virtual std::vector<std::string> listParts(std::string const& session) const = 0;
    virtual std::unique_ptr<JournalPartReader> openPart(std::string const& session, std::string const& part) const = 0;
};

/// What opens and makes such files.
class JournalFormat {
public:
    /// Throws std::filesystem::filesystem_error for what is not there, and std::runtime_error for what is no journal.
    virtual std::unique_ptr<JournalFile> open(std::filesystem::path const& path) const = 0;

    /// Makes the records of a log behind its first, `plan`, a session of a new file, or with `extends` of the one that
    /// is there. Nothing is left to be written to it afterwards, even when it throws.
    virtual void addSession(JournalLog& log, nlohmann::json const& plan, std::filesystem::path const& path,
                            bool extends) const = 0;

protected:
    ~JournalFormat() = default;
};

JournalFormat const& journalFormat();

} // namespace hyx
