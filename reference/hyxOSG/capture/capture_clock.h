// Decides how many images are due, so that a second of the clock holds exactly its number of images.
#pragma once

namespace hyxOSG {

/// Image k of a capture is due when k + 1 periods have passed since the clock began: n seconds hold n times the rate,
/// no matter when or how often the clock is asked. What is drawn at the very beginning, before time goes on, is an
/// image before these: a capture that begins at time 0 shows time 0.
class CaptureClock {
public:
    /// Begins a capture at this time, in seconds.
    void begin(double now);

    /// Images a second, 0 for one per question. A change begins the periods anew at the time of the next question.
    void setRate(double rate);

    double rate() const { return m_rate; }

    /// Seconds since it was last asked for images.
    double passed(double now) const { return now - m_last; }

    /// The number of images due now that were not taken yet; they count as taken. A time before the last one (the
    /// simulation was set back) begins the periods anew.
    /// \param longestGap seconds to make up for at most: after a longer silence the periods begin anew with one image.
    long takeDue(double now, double longestGap);

private:
    void beginPeriods(double now);

    double m_rate = 30;
    double m_begin = 0;
    double m_last = 0;
    long m_taken = 0;
    bool m_rateChanged = false;
    bool m_opened = false; ///< whether the first question since the beginning was answered
};

} // namespace hyxOSG
