// Keeps a loop at its pace.
#pragma once

#include <chrono>

namespace hyxOSG {

/// Sleeps so that frames, and simulated time, keep to real time. Never spins: what is left of a sleep that the system
/// made too long is taken from the next one.
class Pacer {
public:
    using Clock = std::chrono::steady_clock;

    /// 0 for no limit.
    void setTargetFps(double framesPerSecond);

    double targetFps() const { return m_targetFps; }

    void setRealTimeSync(bool enable);

    bool realTimeSync() const { return m_realTimeSync; }

    /// How many steps of `timeStep` seconds are due since the last call; at most 10, what is beyond is forgotten.
    int stepsDue(double timeStep);

    /// Sleeps to the end of the frame; without a limit of frames, to the next step that is due in real time.
    void endFrame(double timeStep, bool stepping);

    /// Forgets the time that has passed: after a pause, and when a scene was built.
    void restart();

private:
    double m_targetFps = 0;
    bool m_realTimeSync = false;
    bool m_running = false;        ///< m_simulated is set
    Clock::time_point m_simulated; ///< the real time that simulated time has reached
    Clock::time_point m_nextFrame;
};

} // namespace hyxOSG
