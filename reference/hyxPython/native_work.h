// Lets other threads of the interpreter run while this one computes, waits or writes.
#pragma once

#include "platform/hyxPython/native_work.h"

#include <cxxabi.h>

#include <chrono>

struct _ts; // the interpreter's state of a thread

namespace hyxPython {

/// How long a wait may last before it looks whether Ctrl-C was typed.
constexpr std::chrono::milliseconds longestSleep{50};

/// Gives the interpreter's lock away until the end of its scope, and keeps other threads from calling the library
/// meanwhile. First waits for their work to end. Nothing in the scope may call a script. Does nothing on a thread that
/// does not hold the lock.
class NativeWork {
public:
    NativeWork() : NativeWork(nullptr) {}

    /// A step of a simulation. While the thread's call is the `OwnTurn` of just this one, others may step meanwhile.
    explicit NativeWork(void const* simulation);
    ~NativeWork();
    NativeWork(NativeWork const&) = delete;
    NativeWork& operator=(NativeWork const&) = delete;

private:
    _ts* m_state = nullptr;
};

/// Takes the interpreter's lock until the end of its scope, for a call of a script out of a `NativeWork` or from a
/// thread of the library's own. Does nothing on a thread that holds it.
class ScriptCall {
public:
    ScriptCall();
    ~ScriptCall();
    ScriptCall(ScriptCall const&) = delete;
    ScriptCall& operator=(ScriptCall const&) = delete;

private:
    int m_former = -1;
};

/// As `NativeWork` for a scope that touches nothing of the library, such as a sleep: other threads may call it.
class IdleWait {
public:
    IdleWait();
    ~IdleWait();
    IdleWait(IdleWait const&) = delete;
    IdleWait& operator=(IdleWait const&) = delete;

private:
    _ts* m_state = nullptr;
};

/// Lets no thread but the calling one go on with the library, and waits a moment for the others to rest. Must hold the
/// interpreter's lock.
void restOtherThreads();

/// Calls the interpreter. Where a thread still runs at the interpreter's exit, that ends it by unwinding its stack,
/// past destructors that need the lock: such a thread rests instead.
template <class Call>
decltype(auto) restWhereEnded(Call call) {
    try {
        return call();
    } catch (abi::__forced_unwind const&) {
        restForGood();
    }
}

/// Asks once in `longestSleep`, so that a loop may ask in each round, whether the interpreter wants the caller to
/// return: Ctrl-C, an error that a script has left.
class InterruptWatch {
public:
    bool interrupted();

private:
    long long m_next = 0; ///< nanoseconds of the steady clock
};

} // namespace hyxPython
