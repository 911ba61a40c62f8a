// Gives the interpreter's lock away and takes it again.
#include "reference/hyxPython/native_work.h"

#include "platform/hyxPython/native_work.h"
#include "reference/hyxPython/interpreter.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace hyxPython {

std::atomic<bool> nativeWorkRuns = false;

namespace {

constexpr std::chrono::milliseconds longestPass{20};

/// Lives to the end of the process: daemon threads may wait until then.
struct Turnstile {
    std::mutex mutex;
    std::condition_variable ended;
    std::condition_variable passed;
    int waiting = 0; ///< threads that want to call the library
    std::thread::id worker;
};

Turnstile& turnstile() {
    static Turnstile* const made = new Turnstile;
    return *made;
}

} // namespace

NativeWork::NativeWork() {
    if (!interpreterAnswers())
        return;
    turnstile().worker = std::this_thread::get_id();
    nativeWorkRuns = true; // set and read under the interpreter's lock: no call can slip in between
    m_state = PyEval_SaveThread();
}

NativeWork::~NativeWork() {
    if (!m_state)
        return;
    Turnstile& gate = turnstile();
    {
        std::unique_lock lock(gate.mutex);
        nativeWorkRuns = false;
        if (gate.waiting > 0) { // they pass first: a loop that works all the time would never let them
            gate.ended.notify_all();
            gate.passed.wait_for(lock, longestPass, [&] { return gate.waiting == 0; });
        }
    }
    PyEval_RestoreThread(m_state);
}

void waitForNativeWork() {
    Turnstile& gate = turnstile();
    while (nativeWorkRuns && gate.worker != std::this_thread::get_id()) {
        PyThreadState* const state = PyEval_SaveThread();
        {
            std::unique_lock lock(gate.mutex);
            ++gate.waiting;
            gate.ended.wait(lock, [] { return !nativeWorkRuns; });
        }
        PyEval_RestoreThread(state);
        std::lock_guard const lock(gate.mutex);
        if (--gate.waiting == 0)
            gate.passed.notify_all();
    }
}

ScriptCall::ScriptCall() {
    if (Py_IsInitialized() && !PyGILState_Check())
        m_former = PyGILState_Ensure();
}

ScriptCall::~ScriptCall() {
    if (m_former >= 0)
        PyGILState_Release(static_cast<PyGILState_STATE>(m_former));
}

IdleWait::IdleWait() : m_state(interpreterAnswers() ? PyEval_SaveThread() : nullptr) {}

IdleWait::~IdleWait() {
    if (m_state)
        PyEval_RestoreThread(m_state);
}

bool InterruptWatch::interrupted() {
    long long const now = std::chrono::steady_clock::now().time_since_epoch().count();
    if (now < m_next)
        return false;
    m_next = now + std::chrono::nanoseconds(longestSleep).count();
    return interpreterInterrupts();
}

} // namespace hyxPython
