// The part of a joint that stops it at its ends.
#pragma once

#include "platform/hyx/joints/elementary_constraint.h"

namespace hyx {

/// Keeps a joint's free direction within bounds.
class Range1D : public ElementaryConstraint {
public:
    /// Metres or radians.
    void setRange(RangeReal const& range) { m_range = range; }

    RangeReal getRange() const { return m_range; }

protected:
    ~Range1D() override = default;

private:
    RangeReal m_range;
};

} // namespace hyx
