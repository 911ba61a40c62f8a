// A link to memory stands where the library writes.
#include "reference/machinery/files/memory_file.h"

#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <sstream>
#include <system_error>

namespace hyx {
namespace {

[[noreturn]] void fail(std::filesystem::path const& name, int reason) {
    throw std::filesystem::filesystem_error("cannot write the file", name,
                                            std::error_code(reason, std::generic_category()));
}

/// A folder that goes with all that is in it.
class Workplace {
public:
    explicit Workplace(std::filesystem::path const& name) {
        std::string pattern = (std::filesystem::temp_directory_path() / "hyx-XXXXXX").string();
        if (!mkdtemp(pattern.data()))
            fail(name, errno);
        m_folder = pattern;
    }

    ~Workplace() {
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }

    Workplace(Workplace const&) = delete;
    Workplace& operator=(Workplace const&) = delete;

    std::filesystem::path const& folder() const { return m_folder; }

private:
    std::filesystem::path m_folder;
};

class Memory {
public:
    explicit Memory(std::filesystem::path const& name) : m_descriptor(memfd_create("hyx", MFD_CLOEXEC)) {
        if (m_descriptor < 0)
            fail(name, errno);
    }

    ~Memory() { close(m_descriptor); }

    Memory(Memory const&) = delete;
    Memory& operator=(Memory const&) = delete;

    std::string path() const { return "/proc/self/fd/" + std::to_string(m_descriptor); }

private:
    int m_descriptor;
};

std::string contentOf(std::filesystem::path const& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return std::move(content).str();
}

/// The process's limit holds for memory files, too, and the library may not have noticed.
void requireWithinLimit(std::string const& content, std::filesystem::path const& name) {
    rlimit limit;
    if (getrlimit(RLIMIT_FSIZE, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY && content.size() >= limit.rlim_cur)
        fail(name, EFBIG);
}

} // namespace

WrittenFiles captureFiles(std::filesystem::path const& name, std::function<bool(std::string const&)> const& write) {
    Workplace const workplace(name);
    Memory const memory(name);
    std::filesystem::path const link = workplace.folder() / name.filename();
    if (symlink(memory.path().c_str(), link.c_str()) != 0)
        fail(name, errno);
    WrittenFiles files;
    files.success = write(link.string());
    files.content = contentOf(memory.path());
    requireWithinLimit(files.content, name);
    for (auto const& entry : std::filesystem::directory_iterator(workplace.folder()))
        if (entry.is_regular_file() && !entry.is_symlink())
            files.besides[entry.path().filename().string()] = contentOf(entry.path());
    return files;
}

} // namespace hyx
