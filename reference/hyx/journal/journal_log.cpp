// Framing, locking and checking of records.
#include "reference/hyx/journal/journal_log.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>
#include <zlib.h>

#include <cerrno>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace hyx {
namespace {

struct Head {
    std::uint32_t mark;
    std::uint32_t kind;
    std::uint64_t size;     ///< of the content
    std::uint32_t checkSum; ///< of the content
    std::uint32_t headSum;  ///< of all above
};

constexpr std::uint32_t mark = 0x67'6f'6c'68; // "hlog"

std::uint32_t checkSum(void const* data, std::size_t size) {
    return static_cast<std::uint32_t>(crc32_z(0, static_cast<Bytef const*>(data), size));
}

std::uint32_t headSum(Head const& head) {
    return checkSum(&head, offsetof(Head, headSum));
}

} // namespace

/// -1 with the reason in errno.
int JournalLog::openLocked(std::filesystem::path const& path, int flags) {
    constexpr mode_t everybody = 0666; // less what the process's mask takes away
    int const file = ::open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | flags, everybody);
    struct stat found;
    if (file < 0)
        return file;
    if (fstat(file, &found) == 0 && S_ISREG(found.st_mode) && flock(file, LOCK_EX | LOCK_NB) == 0)
        return file;
    int const reason = S_ISREG(found.st_mode) ? errno : EINVAL;
    close(file);
    errno = reason;
    return -1;
}

JournalLog JournalLog::create(std::filesystem::path const& path) {
    JournalLog log;
    log.m_path = path;
    log.m_file = openLocked(path, O_CREAT);
    if (log.m_file < 0 && errno == EWOULDBLOCK)
        throw std::runtime_error("the journal '" + path.string() + "' is being recorded by another program");
    if (log.m_file < 0 || ftruncate(log.m_file, 0) != 0)
        log.fail(errno);
    return log;
}

JournalLog JournalLog::open(std::filesystem::path const& path) {
    JournalLog log;
    log.m_path = path;
    log.m_file = openLocked(path, 0);
    if (log.m_file < 0 && errno != ENOENT && errno != ENOTDIR && errno != EWOULDBLOCK)
        log.fail(errno);
    return log;
}

JournalLog::~JournalLog() {
    if (m_file >= 0)
        close(m_file);
}

void JournalLog::append(Kind kind, std::span<char const> content) {
    Head head{mark, static_cast<std::uint32_t>(kind), content.size(), checkSum(content.data(), content.size()), 0};
    head.headSum = headSum(head);
    iovec parts[] = {{&head, sizeof head}, {const_cast<char*>(content.data()), content.size()}};
    std::size_t const whole = sizeof head + content.size();
    std::size_t done = 0;
    while (done < whole) {
        bool const inHead = done < sizeof head;
        iovec rest[2] = {parts[0], parts[1]};
        iovec& first = rest[inHead ? 0 : 1];
        std::size_t const skipped = inHead ? done : done - sizeof head;
        first.iov_base = static_cast<char*>(first.iov_base) + skipped;
        first.iov_len -= skipped;
        ssize_t const written = pwritev(m_file, &first, inHead ? 2 : 1, static_cast<off_t>(m_size + done));
        if (written < 0 && errno != EINTR) {
            int const reason = errno;
            (void)!ftruncate(m_file, static_cast<off_t>(m_size));
            fail(reason);
        }
        done += written > 0 ? static_cast<std::size_t>(written) : 0;
    }
    m_size += whole;
}

bool JournalLog::next(Kind& kind, std::string& content) {
    struct stat found;
    if (fstat(m_file, &found) != 0)
        fail(errno);
    Head head;
    bool const whole = read(&head, sizeof head, m_place) && head.mark == mark && head.headSum == headSum(head) &&
                       head.size <= static_cast<std::uint64_t>(found.st_size) - m_place - sizeof head;
    if (!whole)
        return false;
    content.resize(head.size);
    if (!read(content.data(), head.size, m_place + sizeof head) || checkSum(content.data(), head.size) != head.checkSum)
        return false;
    m_place += sizeof head + head.size;
    kind = static_cast<Kind>(head.kind);
    return true;
}

bool JournalLog::read(void* target, std::size_t size, std::uint64_t place) const {
    auto* bytes = static_cast<char*>(target);
    while (size > 0) {
        ssize_t const count = pread(m_file, bytes, size, static_cast<off_t>(place));
        if (count < 0 && errno != EINTR)
            fail(errno);
        if (count == 0)
            return false;
        if (count > 0) {
            bytes += count;
            place += static_cast<std::uint64_t>(count);
            size -= static_cast<std::size_t>(count);
        }
    }
    return true;
}

void JournalLog::remove() {
    if (unlink(m_path.c_str()) != 0)
        fail(errno);
}

void JournalLog::swap(JournalLog& other) noexcept {
    std::swap(m_path, other.m_path);
    std::swap(m_file, other.m_file);
    std::swap(m_size, other.m_size);
    std::swap(m_place, other.m_place);
}

void JournalLog::fail(int reason) const {
    throw std::filesystem::filesystem_error("cannot record the journal", m_path,
                                            std::error_code(reason, std::generic_category()));
}

} // namespace hyx
