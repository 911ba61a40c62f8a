// A process of its own that reads files first, so that what crashes or never ends there does not do so here.
#pragma once

#include <string>

namespace hyxOSG {

enum class TrialKind : char { MODEL = 'm', PICTURE = 'p', FONT = 'f' };

/// Has another process read the file, within limits of time and memory. "" when it could, else why not, in words that
/// follow the file's name. The process stays for the next file until one has ended it. It is a fresh one of the
/// interpreter's program, not a copy of this one, which may hold a window.
std::string tryReading(TrialKind kind, std::string const& path, std::string const& options);

} // namespace hyxOSG
