// Native work that goes on while other threads of the interpreter have their turn.
#pragma once

#include <atomic>

namespace hyxPython {

/// Whether a thread steps or draws without the interpreter's lock. What it works with must not change meanwhile, so
/// every call of another thread first waits.
extern std::atomic<bool> nativeWorkRuns;

/// Returns when no other thread works so; must hold the interpreter's lock, and lets go of it while it waits.
void waitForNativeWork();

/// Stops the calling thread until the process ends, and others wait for its work no longer. For one that the
/// interpreter ends at its exit; must not hold the interpreter's lock.
[[noreturn]] void restForGood() noexcept;

/// Threads that still run when the interpreter's exit begins rest when they next call the library, and come back from
/// its work no more. False with a Python error set where the exit cannot be watched; must hold the interpreter's lock.
bool watchExit();

/// A call that touches one simulation and nothing that another one steps with. It waits as every call does, but not for
/// the steps of other simulations that were called so, and they not for its own. Must hold the interpreter's lock.
class OwnTurn {
public:
    explicit OwnTurn(void const* simulation);
    ~OwnTurn();
    OwnTurn(OwnTurn const&) = delete;
    OwnTurn& operator=(OwnTurn const&) = delete;

private:
    void const* m_former;
};

} // namespace hyxPython
