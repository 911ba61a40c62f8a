// Intervals of numbers.
#pragma once

#include <limits>

namespace hyx {

/// A closed interval of numbers; empty while its lower bound is above the upper one.
class RangeReal {
public:
    /// Everything.
    RangeReal() = default;

    /// From -limit to limit.
    explicit RangeReal(double limit) : RangeReal(-limit, limit) {}

    /// Throws std::invalid_argument when a bound is not a number or `lower` is above `upper`.
    RangeReal(double lower, double upper);

    /// The lower end.
    double lower() const { return m_lower; }

    /// The upper end.
    double upper() const { return m_upper; }

    /// From the lower to the upper end.
    double size() const { return m_upper - m_lower; }

    /// Whether the value lies between the ends, or at one.
    bool contains(double value) const { return value >= m_lower && value <= m_upper; }

    /// The value, or the end that it lies beyond.
    double clamp(double value) const { return value < m_lower ? m_lower : value > m_upper ? m_upper : value; }

    bool operator==(RangeReal const&) const = default;

private:
    double m_lower = -std::numeric_limits<double>::infinity();
    double m_upper = std::numeric_limits<double>::infinity();
};

} // namespace hyx
