// What a session is recorded to: records one after the other, readable up to the last whole one.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>

namespace hyx {

/// An append-only file, locked by the process that has it open.
///
/// Each record goes to the system at once, with its length and check sum in front: a process that is killed loses the
/// record that it was writing, and a disk that is full refuses a whole record.
///
/// Failures throw std::filesystem::filesystem_error.
class JournalLog {
public:
    enum class Kind : std::uint32_t { SESSION = 1, PART = 2, STATE = 3 };

    /// An empty log in place of any other. Throws std::runtime_error when another process writes it.
    static JournalLog create(std::filesystem::path const& path);
    /// The log as it is; none when it is missing, or another process writes it.
    static JournalLog open(std::filesystem::path const& path);

    JournalLog() = default;

    JournalLog(JournalLog&& other) noexcept { swap(other); }

    JournalLog& operator=(JournalLog other) noexcept {
        swap(other);
        return *this;
    }

    ~JournalLog();

    explicit operator bool() const { return m_file >= 0; }

    void append(Kind kind, std::span<char const> content);

    /// The next record is the first.
    void rewind() { m_place = 0; }

    /// False behind the last whole record.
    bool next(Kind& kind, std::string& content);

    /// Deletes the file, which stays open.
    void remove();

private:
    static int openLocked(std::filesystem::path const& path, int flags);
    void swap(JournalLog& other) noexcept;
    [[noreturn]] void fail(int reason) const;
    bool read(void* target, std::size_t size, std::uint64_t place) const;

    std::filesystem::path m_path;
    int m_file = -1;
    std::uint64_t m_size = 0;  ///< of the whole records written
    std::uint64_t m_place = 0; ///< of the next record read
};

} // namespace hyx
