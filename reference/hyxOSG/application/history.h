// The last seconds of a simulation, to go back to.
#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <utility>

namespace hyxSDK {
class Simulation;
} // namespace hyxSDK

namespace hyxOSG {

/// States of a simulation in memory, whole ones, so that what goes on from one of them goes on as it did. It holds so
/// many simulated seconds, or what fits into 64 MiB, and begins anew when bodies or joints come and go.
class History {
public:
    /// Simulated seconds that are kept; 0 for none.
    void setLength(double seconds);

    double length() const { return m_length; }

    /// Takes the present state; what was kept of later times is forgotten, since another future begins.
    void store(hyxSDK::Simulation const& simulation);

    void clear();

    /// Goes so many states back (negative) or forward, as far as there are any. Whether it went anywhere.
    bool move(hyxSDK::Simulation& simulation, int states);

    /// Goes to the last state at or before a time, or to the first one. False when there is none.
    bool moveTo(hyxSDK::Simulation& simulation, double time);

    /// First and last time that is kept.
    std::optional<std::pair<double, double>> span() const;

private:
    struct Entry {
        double time;
        std::string state;
    };

    void show(hyxSDK::Simulation& simulation, size_t index);

    std::deque<Entry> m_entries;
    size_t m_bytes = 0;
    size_t m_present = 0; ///< the entry that was stored or shown last
    double m_length = 0;
    size_t m_revision = 0; ///< of the simulation's structure
};

} // namespace hyxOSG
