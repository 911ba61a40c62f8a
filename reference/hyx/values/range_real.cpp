// Intervals made from their bounds.
#include "platform/hyx/values/range_real.h"

#include <stdexcept>

namespace hyx {

RangeReal::RangeReal(double lower, double upper) : m_lower(lower), m_upper(upper) {
    // Written so that a bound that is not a number fails too.
    if (!(lower <= upper))
        throw std::invalid_argument("the lower bound of a range must not be above its upper bound");
}

} // namespace hyx
