// The queue of frames and the thread that empties it.

#include "reference/hyxOSG/capture/encoder_feeder.h"

#include "reference/hyxPython/interpreter.h"
#include "reference/hyxPython/native_work.h"

#include <csignal>
#include <stdexcept>

namespace hyxOSG {

EncoderFeeder::EncoderFeeder(std::vector<std::string> const& command, std::string const& file)
    : m_process(command, file) {
    // A thread inherits the signal mask: with all blocked, the handlers stay on the interpreter's thread.
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    m_thread = std::thread([this] { feed(); });
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

EncoderFeeder::~EncoderFeeder() {
    if (m_owner.isOther()) {
        m_thread.detach();
        static_cast<void>(m_changed.release());
        return;
    }
    joinThread(true);
}

EncoderFeeder::Frame EncoderFeeder::takeFrame() {
    if (m_owner.isOther()) {
        throw std::runtime_error("the film is recorded by the process that this one was forked from");
    }
    std::lock_guard lock(m_mutex);
    if (m_spare.empty()) {
        return {};
    }
    Frame frame = std::move(m_spare.back());
    m_spare.pop_back();
    return frame;
}

/// False when the interpreter wants the caller to return before the condition holds.
template <class Condition>
bool EncoderFeeder::waitUntil(Condition condition) {
    for (;;) {
        {
            hyxPython::NativeWork const work;
            std::unique_lock lock(m_mutex);
            if (m_changed->wait_for(lock, hyxPython::longestSleep, condition)) {
                return true;
            }
        }
        hyxPython::ScriptCall const call; // drawing may have given the lock away
        if (hyxPython::interpreterInterrupts()) {
            return false;
        }
    }
}

void EncoderFeeder::add(Frame frame) {
    if (!waitUntil([this] { return m_failure || m_waiting.size() < longestQueue; })) {
        return;
    }
    std::lock_guard lock(m_mutex);
    rethrowFailure();
    m_waiting.push_back(std::move(frame));
    ++m_numFrames;
    m_changed->notify_all();
}

bool EncoderFeeder::isActive() {
    if (m_owner.isOther()) {
        return false;
    }
    std::lock_guard lock(m_mutex);
    // While the thread writes, the process is the thread's alone.
    return !m_failure && !m_closing && (m_writing || m_process.isRunning());
}

void EncoderFeeder::finish() {
    if (m_owner.isOther()) {
        return;
    }
    bool const written = waitUntil([this] { return m_failure || (m_waiting.empty() && !m_writing); });
    joinThread(!written);
    rethrowFailure();
    m_process.finish();
}

void EncoderFeeder::feed() {
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_changed->wait(lock, [this] { return m_closing || !m_waiting.empty(); });
        if (m_waiting.empty()) {
            return;
        }
        Frame frame = std::move(m_waiting.front());
        m_waiting.pop_front();
        m_writing = true;
        lock.unlock();
        std::exception_ptr failure;
        try {
            m_process.write(frame.data(), frame.size());
        } catch (...) {
            failure = std::current_exception();
        }
        lock.lock();
        m_writing = false;
        m_spare.push_back(std::move(frame));
        m_failure = failure;
        m_changed->notify_all();
        if (m_failure) {
            return;
        }
    }
}

void EncoderFeeder::rethrowFailure() {
    if (m_failure) {
        std::rethrow_exception(m_failure);
    }
}

void EncoderFeeder::joinThread(bool dropFrames) {
    {
        std::lock_guard lock(m_mutex);
        m_closing = true;
        if (dropFrames) {
            m_waiting.clear();
        }
        m_changed->notify_all();
    }
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

} // namespace hyxOSG
