// Files that a user drags from other programs onto a window of the display.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace hyxOSG {

/// Takes part in the dragging between programs (XDND, version 5) for a window that knows nothing of it: other programs
/// are told to talk to a hidden window of its own, on a connection of its own.
class FileDrops {
public:
    /// Of the window with this number on the display that DISPLAY names; none where that does not answer.
    explicit FileDrops(unsigned long window);
    ~FileDrops();

    /// The paths that were dropped since the last call. Does not wait.
    std::vector<std::string> take();

private:
    struct Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

/// The paths of a list of addresses (text/uri-list): those of files, in their order.
std::vector<std::string> filesOfUriList(std::string const& list);

} // namespace hyxOSG
