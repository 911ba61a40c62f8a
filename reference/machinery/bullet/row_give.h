// How a row of a joint takes an error back.
#pragma once

#include "reference/machinery/bullet/constraint_row.h"

#include <algorithm>
#include <cmath>

namespace hyx {

/// A part of a substep, which is worked out by halves.
struct SubstepHalf {
    bool atPlaces;
    double substep;
    double step;
};

/// The speed that a row aims at and how far it gives way to an impulse: force = (speed - v) / softness, for half of a
/// substep. Without compliance and damping an error is taken back exactly, without compliance in the time of the
/// damping, else as by a spring and a damper.
struct Give {
    double speed = 0;
    double softness = 0;

    Give() = default;

    Give(ConstraintRow const& row, double error, double compliance, double damping, SubstepHalf const& half) {
        if (compliance > 0)
            pull(row, {error, 1, 0, compliance, damping > 0 ? damping : half.step}, half);
        else if (damping > 0)
            speed = -error / (damping + (half.atPlaces ? half.substep : 0));
        else if (half.atPlaces)
            speed = -error / (std::abs(error) > coarseError ? 2 * half.substep : half.substep);
    }

    /// Of a motor that drives as hard as it lacks speed.
    static Give drive(ConstraintRow const& row, double speed, double compliance, double damping,
                      SubstepHalf const& half) {
        Give give;
        give.speed = speed;
        if (compliance > 0)
            give.pull(row, {0, 0, speed, compliance, damping > 0 ? damping : half.step}, half);
        return give;
    }

    static Give brake(ConstraintRow const& row, double viscosity, SubstepHalf const& half) {
        Give give;
        give.pull(row, {0, 0, 0, 1 / viscosity, 1}, half);
        return give;
    }

private:
    /// Metres or radians. Smaller errors are taken back within a substep, larger ones by half in each, as a script may
    /// have put bodies anywhere.
    static constexpr double coarseError = 1e-3;
    /// Keeps the softness finite.
    static constexpr double leastShare = 0.05;

    /// force = ((aim - v) * time - spring * error) / compliance.
    struct Law {
        double error;
        double spring;
        double aim;
        double compliance;
        double time;
    };

    /// Grows from 0 to 1, also at 0 and at infinity.
    static double beyond(double ratio) { return 1 / (1 + 1 / ratio); }

    /// Both halves feel the spring as it is in the middle of the substep, which keeps its energy and its period; the
    /// first feels the damper by the speed after it, the second by the speed before it, which is right to the second
    /// order. Where the row swings or stops faster than a substep can follow, both go over to what is felt at the end,
    /// which comes to rest instead of ringing.
    void pull(ConstraintRow const& row, Law const& law, SubstepHalf const& half) {
        double const late = beyond(law.spring * row.mobility * half.substep * half.substep / law.compliance);
        if (half.atPlaces) {
            double const time = law.spring * (1 + late) / 2 * half.substep + law.time;
            speed = (law.aim * law.time - law.spring * law.error) / time;
            softness = 2 * law.compliance / (half.substep * time);
            return;
        }
        double const stop = law.time * row.mobility * half.substep / (2 * law.compliance);
        double const share = std::max(leastShare, beyond(stop * stop));
        double const way = row.value - row.startValue;
        double const middle = law.error - (1 - late) / 2 * way;
        speed = (law.aim - (1 - share) * way / half.substep - law.spring * middle / law.time) / share;
        softness = 2 * law.compliance / (half.substep * law.time * share);
    }
};

} // namespace hyx
