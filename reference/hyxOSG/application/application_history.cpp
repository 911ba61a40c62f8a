// The application's way back in time: through its last seconds, and through a journal that is played.
#include "reference/hyxOSG/application/application_implementation.h"

namespace hyxOSG {
namespace {

constexpr double watchedHistory = 10; ///< seconds, where a user can go back in them

} // namespace

void ExampleApplication::setHistoryLength(double seconds) {
    m_implementation->history.setLength(seconds);
    m_implementation->historyWanted = seconds;
}

double ExampleApplication::getHistoryLength() const {
    return m_implementation->history.length();
}

hyx::Vec2 ExampleApplication::getHistorySpan() const {
    double const now = getTimeStamp();
    if (m_implementation->journal->isPlaying())
        return {m_implementation->journal->getStartTime(), m_implementation->journal->getEndTime()};
    auto const span = m_implementation->history.span();
    return span ? hyx::Vec2(span->first, span->second) : hyx::Vec2(now, now);
}

bool ExampleApplication::scrub(int states) {
    auto const kept = Implementation::keep(*this);
    hyxSDK::Simulation& simulation = m_implementation->ensureSimulation();
    setAutoStepping(false);
    if (m_implementation->journal->isPlaying())
        return m_implementation->playFrom([&] { return m_implementation->journal->playRelative(&simulation, states); });
    return m_implementation->history.move(simulation, states);
}

bool ExampleApplication::goToTime(double time) {
    auto const kept = Implementation::keep(*this);
    hyxSDK::Simulation& simulation = m_implementation->ensureSimulation();
    m_implementation->pacer.restart();
    if (m_implementation->journal->isPlaying())
        return m_implementation->playFrom([&] { return m_implementation->journal->playAt(&simulation, time); });
    return m_implementation->history.moveTo(simulation, time);
}

void ExampleApplication::Implementation::keepHistory() {
    bool const watched = running && (controller || (window && !window->offscreen()));
    if (!historyWanted && watched && history.length() == 0)
        history.setLength(watchedHistory);
    history.store(*simulation);
}

} // namespace hyxOSG
