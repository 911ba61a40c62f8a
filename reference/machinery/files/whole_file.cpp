// Writing beside the target and renaming.
#include "reference/machinery/files/whole_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>

namespace hyx {
namespace {

/// A short name, so that it fits wherever the target's does; hidden from listings.
std::filesystem::path nextTemporaryName() {
    static std::atomic<unsigned long> count = 0;
    return ".hyx-" + std::to_string(getpid()) + "-" + std::to_string(++count) + ".tmp";
}

/// Names the folder's new content for good; file systems that cannot are none to worry about.
void syncFolder(std::filesystem::path const& folder) {
    int const descriptor = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    fsync(descriptor);
    close(descriptor);
}

} // namespace

NewFile::NewFile(std::filesystem::path target) : m_target(std::move(target)) {
    if (m_target.native().find('\0') != std::string::npos) // the system would see what stands before it
        throw std::invalid_argument("the name of a file holds a null byte");
    std::error_code unresolved;
    if (std::filesystem::is_symlink(m_target, unresolved))
        if (auto const place = std::filesystem::canonical(m_target, unresolved); !unresolved)
            m_target = place; // the link stays a link
    struct stat old;
    bool const replaces = stat(m_target.c_str(), &old) == 0;
    if (!replaces && errno != ENOENT)
        fail(errno);
    if (replaces && S_ISDIR(old.st_mode))
        fail(EISDIR);
    if (replaces && access(m_target.c_str(), W_OK) != 0)
        fail(errno);
    m_inPlace = replaces && !S_ISREG(old.st_mode);
    m_temporary = m_inPlace ? m_target : m_target.parent_path() / nextTemporaryName();
    constexpr mode_t everybody = 0666; // less what the process's mask takes away
    int const flags = O_WRONLY | O_CLOEXEC | (m_inPlace ? O_TRUNC : O_CREAT | O_TRUNC | O_NOFOLLOW);
    m_file = open(m_temporary.c_str(), flags, everybody);
    if (m_file < 0)
        fail(errno);
    if (replaces && !m_inPlace)
        (void)!fchmod(m_file, old.st_mode & 07777);
}

NewFile::~NewFile() {
    if (m_file >= 0 && !m_inPlace)
        (void)!ftruncate(m_file, 0); // gives the room back also where somebody still has it open
    if (m_file >= 0)
        close(m_file);
    if (!m_committed && !m_inPlace)
        unlink(m_temporary.c_str());
}

void NewFile::write(std::string_view bytes) {
    while (!bytes.empty()) {
        ssize_t const written = ::write(m_file, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR)
            fail(errno);
        if (written > 0)
            bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

void NewFile::commit(Durability durability) {
    bool const synced = durability == Durability::SYNCED && !m_inPlace;
    if (synced && fsync(m_file) != 0)
        fail(errno);
    // Some file systems say only when it is closed that there was no room.
    if (close(std::exchange(m_file, -1)) != 0)
        fail(errno);
    if (!m_inPlace && rename(m_temporary.c_str(), m_target.c_str()) != 0)
        fail(errno);
    m_committed = true;
    if (synced)
        syncFolder(m_target.parent_path());
}

void NewFile::fail(int reason) const {
    throw std::filesystem::filesystem_error("cannot write the file", m_target,
                                            std::error_code(reason, std::generic_category()));
}

void writeWholeFile(std::filesystem::path const& path, std::string_view bytes, Durability durability) {
    NewFile file(path);
    file.write(bytes);
    file.commit(durability);
}

} // namespace hyx
