// Gives the interpreter's lock away and takes it again.
#include "reference/hyxPython/native_work.h"

#include "platform/hyxPython/native_work.h"
#include "reference/hyxPython/interpreter.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace hyxPython {

std::atomic<bool> nativeWorkRuns = false;

namespace {

constexpr std::chrono::milliseconds longestPass{20};
constexpr std::chrono::milliseconds longestFarewell{100};

/// What a thread does without the interpreter's lock.
struct Work {
    std::thread::id worker;
    void const* own; ///< the only simulation that it touches; null when it may touch all
};

/// Lives to the end of the process: daemon threads may wait until then.
struct Turnstile {
    std::mutex mutex;
    std::condition_variable changed;
    std::vector<Work> works;
    int waiting = 0;                   ///< threads that want to call the library
    int waitingForAll = 0;             ///< those of them that may touch all
    int resting = 0;                   ///< threads that do not come back
    std::atomic<std::thread::id> last; ///< the only thread that may go on since the interpreter's exit has begun

    bool exits() const { return last != std::thread::id(); }

    bool letsThisThread() const { return !exits() || last == std::this_thread::get_id(); }

    /// Whether this thread's call, of one simulation or of all, meets no work of another thread.
    bool isFree(void const* own) const {
        return std::none_of(works.begin(), works.end(), [own](Work const& work) {
            bool const apart = own && work.own && own != work.own;
            return work.worker != std::this_thread::get_id() && !apart;
        });
    }
};

Turnstile& turnstile() {
    static Turnstile* const made = new Turnstile;
    return *made;
}

void restore(PyThreadState* state) {
    if (!turnstile().letsThisThread())
        restForGood();
    restWhereEnded([state] { PyEval_RestoreThread(state); });
}

/// The simulation of the thread's innermost `OwnTurn`.
thread_local void const* ownTurn = nullptr;

/// Threads of the library's own have nothing to tell a script any more once the interpreter's exit has begun: they go
/// on without it, as others wait for their end.
bool mayAsk() {
    return turnstile().letsThisThread() || PyGILState_GetThisThreadState();
}

/// Returns when this thread's call of one simulation, or of all, meets no work.
void waitFor(void const* own) {
    Turnstile& gate = turnstile();
    if (!gate.letsThisThread()) {
        PyEval_SaveThread();
        restForGood();
    }
    std::unique_lock lock(gate.mutex);
    // Steps that pass each other would never leave a gap for those who wait for all.
    bool const letPass = own && gate.waitingForAll > 0;
    if (gate.isFree(own) && !letPass)
        return;
    int const forAll = own ? 0 : 1;
    ++gate.waiting;
    gate.waitingForAll += forAll;
    do {
        PyThreadState* const state = PyEval_SaveThread();
        if (letPass)
            gate.changed.wait_for(lock, longestPass, [&] { return gate.waitingForAll == 0; });
        gate.changed.wait(lock, [&] { return gate.isFree(own); });
        lock.unlock();
        restore(state);
        lock.lock();
    } while (!gate.isFree(own));
    --gate.waiting;
    gate.waitingForAll -= forAll;
    gate.changed.notify_all();
}

} // namespace

void restForGood() noexcept {
    Turnstile& gate = turnstile();
    {
        std::lock_guard const lock(gate.mutex);
        std::erase_if(gate.works, [](Work const& work) { return work.worker == std::this_thread::get_id(); });
        ++gate.resting;
        gate.changed.notify_all();
    }
    for (;;)
        ::pause();
}

void restOtherThreads() {
    int others = 0;
    for (auto* state = PyInterpreterState_ThreadHead(PyInterpreterState_Get()); state;
         state = PyThreadState_Next(state))
        others += state != PyThreadState_Get();
    if (others == 0)
        return;
    Turnstile& gate = turnstile();
    gate.last = std::this_thread::get_id();
    nativeWorkRuns = true;
    IdleWait const wait;
    std::unique_lock lock(gate.mutex);
    gate.changed.wait_for(lock, longestFarewell, [&] { return gate.resting >= others; });
}

NativeWork::NativeWork(void const* simulation) {
    if (!interpreterAnswers())
        return;
    void const* const own = simulation == ownTurn ? simulation : nullptr;
    waitFor(own);
    Turnstile& gate = turnstile();
    {
        // Under the interpreter's lock since the wait ended: no call can slip in between.
        std::lock_guard const lock(gate.mutex);
        gate.works.push_back({std::this_thread::get_id(), own});
        nativeWorkRuns = true;
    }
    m_state = PyEval_SaveThread();
}

NativeWork::~NativeWork() {
    if (!m_state)
        return;
    Turnstile& gate = turnstile();
    {
        std::unique_lock lock(gate.mutex);
        auto const mine = [](Work const& work) { return work.worker == std::this_thread::get_id(); };
        gate.works.erase(std::find_if(gate.works.rbegin(), gate.works.rend(), mine).base() - 1);
        nativeWorkRuns = !gate.works.empty() || gate.exits();
        if (gate.waiting > 0) { // they pass first: a loop that works all the time would never let them
            gate.changed.notify_all();
            gate.changed.wait(lock, [&] { return gate.waiting == 0 || gate.isFree(nullptr); });
            gate.changed.wait_for(lock, longestPass, [&] { return gate.waiting == 0; });
        }
    }
    restore(m_state);
}

void waitForNativeWork() {
    if (nativeWorkRuns)
        waitFor(nullptr);
}

OwnTurn::OwnTurn(void const* simulation) : m_former(ownTurn) {
    waitFor(simulation);
    ownTurn = simulation;
}

OwnTurn::~OwnTurn() {
    ownTurn = m_former;
}

ScriptCall::ScriptCall() {
    if (Py_IsInitialized() && !PyGILState_Check() && mayAsk())
        m_former = restWhereEnded(PyGILState_Ensure);
}

ScriptCall::~ScriptCall() {
    if (m_former >= 0)
        PyGILState_Release(static_cast<PyGILState_STATE>(m_former));
}

IdleWait::IdleWait() : m_state(interpreterAnswers() ? PyEval_SaveThread() : nullptr) {}

IdleWait::~IdleWait() {
    if (m_state)
        restore(m_state);
}

bool InterruptWatch::interrupted() {
    long long const now = std::chrono::steady_clock::now().time_since_epoch().count();
    if (now < m_next)
        return false;
    m_next = now + std::chrono::nanoseconds(longestSleep).count();
    return interpreterInterrupts();
}

} // namespace hyxPython
