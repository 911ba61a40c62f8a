// Native work that goes on while other threads of the interpreter have their turn.
#pragma once

#include <atomic>

namespace hyxPython {

/// Whether a thread steps or draws without the interpreter's lock. What it works with must not change meanwhile, so
/// every call of another thread first waits.
extern std::atomic<bool> nativeWorkRuns;

/// Returns when no other thread works so; must hold the interpreter's lock, and lets go of it while it waits.
void waitForNativeWork();

} // namespace hyxPython
