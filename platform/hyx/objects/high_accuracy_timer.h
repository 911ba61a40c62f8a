// Measuring real time.
#pragma once

#include <chrono>

namespace hyx {

/// A stop-watch over the machine's steady clock. It starts running when it is made.
class HighAccuracyTimer {
public:
    explicit HighAccuracyTimer(bool running = true) : m_running(running), m_started(Clock::now()) {}

    /// Goes on counting.
    void start();
    /// Stands still until it is started again.
    void stop();
    /// Sets the time to zero; a running timer goes on.
    void reset();

    /// Whether it counts.
    bool isRunning() const { return m_running; }

    /// Milliseconds measured so far.
    double getTime() const;

    /// What has been counted, in seconds.
    double getSeconds() const { return getTime() * 1e-3; }

private:
    using Clock = std::chrono::steady_clock;
    bool m_running;
    Clock::time_point m_started;
    Clock::duration m_elapsed{};
};

} // namespace hyx
