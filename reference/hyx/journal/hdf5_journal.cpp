// Sessions of journals as groups of HDF5 files.
#include "reference/hyx/journal/hdf5_part.h"
#include "reference/hyx/journal/journal_file.h"

#include <cstdio>
#include <cstring>

namespace hyx {
namespace {

using nlohmann::json;
using Kind = JournalLog::Kind;

std::string partName(size_t number) {
    char name[24];
    std::snprintf(name, sizeof name, "part_%06zu", number);
    return name;
}

/// Copies the records behind the first into a session. What does not fit together ends it, as does the end of the log.
void copyRecords(JournalLog& log, hid_t session, Hdf5Storage storage) {
    std::unique_ptr<Hdf5PartWriter> part;
    size_t numParts = 0;
    Kind kind;
    std::string content;
    while (log.next(kind, content)) {
        if (kind == Kind::PART) {
            if (part)
                part->flush();
            part = std::make_unique<Hdf5PartWriter>(session, partName(numParts++), json::parse(content), storage);
        } else if (kind == Kind::STATE && part) {
            std::vector<double> numbers(content.size() / sizeof(double));
            std::memcpy(numbers.data(), content.data(), numbers.size() * sizeof(double));
            part->store(numbers);
        }
    }
    if (part)
        part->flush();
}

/// HDF5 has nothing left to write to the file afterwards.
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

class Hdf5Journal : public JournalFile {
public:
    explicit Hdf5Journal(Hdf5Handle file) : m_file(std::move(file)) {}

    bool hasSession(std::string const& name) const override { return hasHdf5Link(m_file, name); }

    std::vector<std::string> listSessions() const override { return listHdf5Groups(m_file); }

    std::vector<std::string> listParts(std::string const& session) const override {
        return listHdf5Groups(openHdf5Group(m_file, session));
    }

    std::unique_ptr<JournalPartReader> openPart(std::string const& session, std::string const& part) const override {
        return std::make_unique<Hdf5PartReader>(openHdf5Group(m_file, session), part);
    }

private:
    Hdf5Handle m_file;
};

class Hdf5Format final : public JournalFormat {
public:
    std::unique_ptr<JournalFile> open(std::filesystem::path const& path) const override {
        return std::make_unique<Hdf5Journal>(openHdf5File(path.string(), false));
    }

    void addSession(JournalLog& log, json const& plan, std::filesystem::path const& path, bool extends) const override {
        hyx::addSession(log, plan, extends ? openHdf5File(path.string(), true) : createHdf5File(path.string()));
    }
};

Hdf5Format const format;

} // namespace
} // namespace hyx

extern "C" __attribute__((visibility("default"))) hyx::JournalFormat const* const hyxJournalFormat = &hyx::format;
