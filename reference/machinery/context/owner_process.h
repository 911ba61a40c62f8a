// Tells a process from the one that it was forked from.
#pragma once

#include <unistd.h>

namespace hyxOSG {

/// The process that made something which a forked child cannot use: threads are not copied, sockets and files are
/// shared.
class OwnerProcess {
public:
    /// Whether the calling process is a child of the owner.
    bool isOther() const { return m_id != getpid(); }

private:
    pid_t m_id = getpid();
};

} // namespace hyxOSG
