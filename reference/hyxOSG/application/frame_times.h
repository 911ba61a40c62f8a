// What the frames of a loop cost, and how simulated time keeps up.
#pragma once

#include <chrono>
#include <cstddef>

namespace hyxOSG {

/// Means over the last half second, which is as long as a reader needs to read them.
class FrameTimes {
public:
    using Clock = std::chrono::steady_clock;

    struct Means {
        double framesPerSecond = 0;
        double realTimeFactor = 0; ///< simulated seconds in a second
        double step = 0;           ///< seconds that a step of the simulation costs
        double draw = 0;           ///< seconds that a picture costs
    };

    /// Measures one step or picture from its making to its end.
    class Measure {
    public:
        explicit Measure(FrameTimes& times, bool step) : m_times(times), m_step(step) {}

        ~Measure() { (m_step ? m_times.m_steps : m_times.m_draws).add(cost()); }

        Measure(Measure const&) = delete;
        Measure& operator=(Measure const&) = delete;

        Clock::duration cost() const { return Clock::now() - m_start; }

    private:
        FrameTimes& m_times;
        bool m_step;
        Clock::time_point m_start = Clock::now();
    };

    void endFrame(double simulatedTime);

    Means const& means() const { return m_means; }

private:
    struct Sum {
        Clock::duration total{};
        size_t count = 0;

        void add(Clock::duration cost) {
            total += cost;
            ++count;
        }

        double mean() const { return count ? std::chrono::duration<double>(total).count() / double(count) : 0; }
    };

    Means m_means;
    Sum m_steps;
    Sum m_draws;
    size_t m_frames = 0;
    double m_simulatedStart = 0;
    Clock::time_point m_start = Clock::now();
};

} // namespace hyxOSG
