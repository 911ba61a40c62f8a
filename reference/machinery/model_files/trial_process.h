// Trying out what may crash.
// Runs something that may crash in a process of its own first.
#pragma once

#include <functional>

namespace hyxOSG {

enum class Trial { SUCCEEDED, FAILED, CRASHED, ENDLESS };

/// Runs `work` in a copy of this process, with limits on time and memory. What it makes is lost with the copy; only how
/// it went comes back. Where no process can be started the trial counts as a success.
Trial tryInChild(std::function<bool()> const& work);

} // namespace hyxOSG
