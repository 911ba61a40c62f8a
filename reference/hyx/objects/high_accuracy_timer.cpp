// Reads the steady clock.
#include "platform/hyx/objects/high_accuracy_timer.h"

namespace hyx {

void HighAccuracyTimer::start() {
    if (m_running)
        return;
    m_running = true;
    m_started = Clock::now();
}

void HighAccuracyTimer::stop() {
    if (!m_running)
        return;
    m_elapsed += Clock::now() - m_started;
    m_running = false;
}

void HighAccuracyTimer::reset() {
    m_elapsed = {};
    m_started = Clock::now();
}

double HighAccuracyTimer::getTime() const {
    auto const elapsed = m_running ? m_elapsed + (Clock::now() - m_started) : m_elapsed;
    return std::chrono::duration<double, std::milli>(elapsed).count();
}

} // namespace hyx
