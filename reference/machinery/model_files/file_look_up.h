// Where plugins come from, and which files a model may name.
#pragma once

#include <filesystem>
#include <string>

namespace hyxOSG {

/// While it lives, this thread's readers find only files in the folder of `file` and below it, whatever the file names.
class ReadingBelow {
public:
    explicit ReadingBelow(std::string const& file);
    ~ReadingBelow();
    ReadingBelow(ReadingBelow const&) = delete;
    ReadingBelow& operator=(ReadingBelow const&) = delete;

private:
    std::filesystem::path m_folder;
    std::filesystem::path const* m_before;
};

/// Whether a reader of this thread may open `file` now.
bool mayRead(std::string const& file);

} // namespace hyxOSG
