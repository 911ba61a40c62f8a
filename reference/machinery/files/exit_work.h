// What is still to be done when the process exits.
#pragma once

#include <functional>

namespace hyx {

/// Has `work` done at the exit of the process, for an owner that lives until then. What it throws is printed. An owner
/// has one work; "{}" takes it back.
void setExitWork(void const* owner, std::function<void()> work);

} // namespace hyx
