// The files of an SDF model before the format's library reads them: versions, and models that include themselves.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <set>
#include <string>

namespace hyxtavlang {

/// Checks files and those that they include. Files of a version that is newer than the library's are read from copies
/// that say the library's version: up to 1.12 versions only add elements.
class SdfFiles {
public:
    SdfFiles() = default;
    SdfFiles(SdfFiles const&) = delete;
    SdfFiles& operator=(SdfFiles const&) = delete;
    ~SdfFiles();

    /// Finds the file that an include means; empty where there is none.
    using Find = std::function<std::string(std::string const& uri)>;
    /// Is told of a file of a newer version.
    using Tell = std::function<void(std::string const& path, int line, std::string const& version)>;

    /// Throws ModelError for what cannot be read, or would be read without end.
    void check(std::string const& path, Find const& find, Tell const& tell);

    /// What the library reads in the place of a file, and back.
    std::string copy(std::string const& path) const;
    std::string original(std::string const& path) const;

private:
    void addCopy(std::string const& path);

    std::filesystem::path m_folder; ///< of the copies; empty as long as there are none
    std::map<std::string, std::string> m_copies, m_originals;
    std::set<std::filesystem::path> m_open, m_done;
};

} // namespace hyxtavlang
