// The counting of the images that are due.

#include "reference/hyxOSG/capture/capture_clock.h"

#include <cmath>

namespace hyxOSG {

void CaptureClock::begin(double now) {
    beginPeriods(now);
    m_opened = false;
}

void CaptureClock::beginPeriods(double now) {
    m_begin = m_last = now;
    m_taken = 0;
    m_rateChanged = false;
}

void CaptureClock::setRate(double rate) {
    m_rate = rate;
    m_rateChanged = true;
}

long CaptureClock::takeDue(double now, double longestGap) {
    if (m_rate == 0) {
        return 1;
    }
    bool const opening = !m_opened && now == m_begin;
    m_opened = true;
    if (m_rateChanged || now < m_last) {
        beginPeriods(m_rateChanged ? m_last : now);
    }
    if (now - m_last > longestGap) {
        beginPeriods(now);
        return 1;
    }
    m_last = now;
    // Step sizes such as 1/60 are not exact in binary: a millionth of a period early is on time.
    long const reached = static_cast<long>(std::floor((now - m_begin) * m_rate + 1e-6));
    long const due = reached - m_taken;
    m_taken = reached;
    return due + opening;
}

} // namespace hyxOSG
