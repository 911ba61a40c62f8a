// Waits by sleeping to points of the steady clock.
#include "reference/hyxOSG/application/pacer.h"

#include "reference/hyxPython/native_work.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <thread>

namespace hyxOSG {
namespace {

constexpr int mostStepsAtOnce = 10;

Pacer::Clock::duration seconds(double value) {
    return std::chrono::duration_cast<Pacer::Clock::duration>(std::chrono::duration<double>(value));
}

} // namespace

void Pacer::setTargetFps(double framesPerSecond) {
    if (std::isnan(framesPerSecond))
        throw std::invalid_argument("the target frames per second must be a number");
    m_targetFps = framesPerSecond > 0 && std::isfinite(framesPerSecond) ? framesPerSecond : 0;
    m_nextFrame = Clock::now();
}

void Pacer::setRealTimeSync(bool enable) {
    m_realTimeSync = enable;
    restart();
}

void Pacer::restart() {
    m_running = false;
}

int Pacer::stepsDue(double timeStep) {
    auto const now = Clock::now();
    auto const step = seconds(timeStep);
    if (!m_running) {
        m_running = true;
        m_simulated = now;
    }
    int due = 0;
    for (; due < mostStepsAtOnce && m_simulated + step <= now; ++due)
        m_simulated += step;
    if (due == mostStepsAtOnce)
        m_simulated = std::max(m_simulated, now - step);
    return due;
}

void Pacer::endFrame(double timeStep, bool stepping) {
    auto const now = Clock::now();
    auto until = now;
    if (m_targetFps > 0) {
        auto const period = std::max(seconds(1 / m_targetFps), Clock::duration(1));
        m_nextFrame += period;
        if (m_nextFrame < now - period)
            m_nextFrame = now; // too slow for the target: do not hurry to make up for it
        until = m_nextFrame;
    } else if (m_realTimeSync && stepping && m_running) {
        until = m_simulated + seconds(timeStep);
    }
    if (until > now) {
        hyxPython::IdleWait const wait;
        std::this_thread::sleep_until(std::min(until, now + hyxPython::longestSleep));
    }
}

} // namespace hyxOSG
