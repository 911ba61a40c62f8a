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

    /// Simulated seconds in a second of real time, while they are kept together. Throws std::invalid_argument unless it
    /// is positive and finite.
    void setSpeed(double speed);

    double speed() const { return m_speed; }

    /// Begins the steps of a frame: what may be taken now follows from the time that has passed. Of what is due, more
    /// than a quarter of a second is forgotten.
    void beginSteps(double timeStep);

    /// Whether another step of `timeStep` seconds is due and the frame has time left for it; it counts as taken. Of the
    /// steps of a frame the first needs no time left, so that the heaviest simulation goes on.
    bool takeStep(double timeStep);

    /// When work other than drawing must end, for the frames to keep their rate; half of the time is its in any case.
    Clock::time_point workEnd(Clock::time_point start) const;

    /// What drawing a frame has cost.
    void noteDrawing(Clock::duration cost);

    /// Sleeps to the end of the frame. With neither a limit of frames nor real time to keep to, it has none.
    void endFrame();

    /// Forgets the time that has passed: after a pause, and when a scene was built.
    void restart();

private:
    Clock::duration period() const;

    double m_targetFps = 0;
    double m_speed = 1;
    bool m_realTimeSync = false;
    bool m_running = false;        ///< m_simulated is set
    bool m_stepped = false;        ///< in this frame
    Clock::time_point m_simulated; ///< the real time that simulated time has reached
    Clock::time_point m_workEnd;
    Clock::time_point m_nextFrame;
    Clock::duration m_drawing{}; ///< cost of the latest frames, smoothed
};

} // namespace hyxOSG
