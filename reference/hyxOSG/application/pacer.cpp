// Waits by sleeping to points of the steady clock.
#include "reference/hyxOSG/application/pacer.h"

#include "reference/hyxPython/native_work.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <thread>

namespace hyxOSG {
namespace {

constexpr double displayRate = 60;    ///< frames per second of a window that names no other
constexpr double mostCaughtUp = 0.25; ///< seconds that a simulation may be behind
constexpr int smoothing = 8;          ///< frames

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

void Pacer::setSpeed(double speed) {
    if (!(speed > 0) || !std::isfinite(speed))
        throw std::invalid_argument("the speed must be a positive number: 1 is real time, 0.1 slow motion");
    m_speed = speed;
    restart();
}

Pacer::Clock::duration Pacer::period() const {
    return std::max(seconds(1 / (m_targetFps > 0 ? m_targetFps : displayRate)), Clock::duration(1));
}

Pacer::Clock::time_point Pacer::workEnd(Clock::time_point start) const {
    return start + std::max({period() - m_drawing, m_drawing, period() / 2});
}

void Pacer::noteDrawing(Clock::duration cost) {
    m_drawing += (cost - m_drawing) / smoothing;
}

void Pacer::beginSteps(double timeStep) {
    auto const now = Clock::now();
    if (!m_running)
        m_simulated = now;
    m_running = true;
    m_stepped = false;
    m_simulated = std::max(m_simulated, now - std::max(seconds(mostCaughtUp), seconds(timeStep / m_speed)));
    m_workEnd = workEnd(now);
}

bool Pacer::takeStep(double timeStep) {
    auto const now = Clock::now();
    auto const step = seconds(timeStep / m_speed);
    if (m_simulated + step > now || (m_stepped && now >= m_workEnd))
        return false;
    m_simulated += step;
    return m_stepped = true;
}

void Pacer::endFrame() {
    if (m_targetFps == 0 && !m_realTimeSync)
        return;
    auto const now = Clock::now();
    m_nextFrame += period();
    if (m_nextFrame < now - period())
        m_nextFrame = now; // too slow for the rate: do not hurry to make up for it
    if (m_nextFrame > now) {
        hyxPython::IdleWait const wait;
        std::this_thread::sleep_until(std::min(m_nextFrame, now + hyxPython::longestSleep));
    }
}

} // namespace hyxOSG
