// Files that come whole or not at all: all that is written goes through here.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace hyx {

/// Whether content must outlast a loss of power before it takes its name. Against full disks, limits and kills a file
/// is whole either way; one of many in a row, such as a numbered image, need not wait for the disk.
enum class Durability { SYNCED, UNSYNCED };

/// A file that is written beside its target under a name of its own, and takes the target's place when it is complete.
/// Not committed, it leaves nothing behind, and what was there before stays.
///
/// Failures throw std::filesystem::filesystem_error with the target's path and the system's reason.
class NewFile {
public:
    explicit NewFile(std::filesystem::path target);
    ~NewFile();
    NewFile(NewFile const&) = delete;
    NewFile& operator=(NewFile const&) = delete;

    /// Where it is written until then; a library may write there in place of `write`.
    std::filesystem::path const& temporaryPath() const { return m_temporary; }

    void write(std::string_view bytes);
    void commit(Durability durability = Durability::SYNCED);

private:
    [[noreturn]] void fail(int reason) const;

    std::filesystem::path m_target;
    std::filesystem::path m_temporary; ///< the target itself where that is no ordinary file, such as a pipe
    int m_file = -1;
    bool m_inPlace = false;
    bool m_committed = false;
};

/// Replaces or makes a file. \throws std::filesystem::filesystem_error, and then the old file stands.
void writeWholeFile(std::filesystem::path const& path, std::string_view bytes,
                    Durability durability = Durability::SYNCED);

} // namespace hyx
