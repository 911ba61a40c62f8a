// Takes the means of frames.
#include "reference/hyxOSG/application/frame_times.h"

namespace hyxOSG {

void FrameTimes::endFrame(double simulatedTime) {
    constexpr double shown = 0.5; // seconds
    double const passed = std::chrono::duration<double>(Clock::now() - m_start).count();
    bool const goesBack = simulatedTime < m_simulatedStart; // another scene, or a state of before
    ++m_frames;
    if (passed < shown && !goesBack)
        return;
    if (!goesBack)
        m_means = {double(m_frames) / passed, (simulatedTime - m_simulatedStart) / passed, m_steps.mean(),
                   m_draws.mean()};
    m_steps = m_draws = {};
    m_frames = 0;
    m_simulatedStart = simulatedTime;
    m_start = Clock::now();
}

} // namespace hyxOSG
