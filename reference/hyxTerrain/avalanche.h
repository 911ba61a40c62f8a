// Soil that slides.
#pragma once

#include "reference/hyxTerrain/columns.h"

#include <vector>

namespace hyxTerrain {

/// Lets soil slide where a slope is steeper than it can stand. Only columns near a change are looked at.
class Avalanche {
public:
    explicit Avalanche(Columns& columns);

    /// Looks at this column and its neighbours in the next step.
    void wake(std::size_t c);
    /// Looks at all columns in the next step.
    void wakeAll();
    /// Lets soil slide and come to rest for `timeStep` seconds. `gravity` is what pulls it down in m/s2: soil without
    /// any stays where it is.
    void step(hyx::Real timeStep, hyx::Real gravity);

    template <class Bytes>
    void exchangeState(Bytes& bytes) {
        bytes(m_active, m_marks, m_slid);
    }

    /// Whether anything still moves.
    bool isActive() const { return !m_active.empty(); }

private:
    void activate(std::size_t c);
    void slide(std::size_t c, hyx::Real timeStep, hyx::Real gravity);
    hyx::Real standingSlope(std::size_t c) const;

    Columns& m_columns;
    std::vector<std::size_t> m_active;
    std::vector<char> m_marks;
    std::vector<char> m_slid;
    std::vector<hyx::Real> m_standing; ///< slope that each kind of soil stands at
};

} // namespace hyxTerrain
