// Keeps and shows the states.
#include "reference/hyxOSG/application/history.h"

#include "platform/hyxSDK/simulation.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace hyxOSG {
namespace {

constexpr size_t mostBytes = size_t(64) << 20;
constexpr double shortestGap = 1.0 / 60 - 1e-6; ///< simulated seconds between states; a picture shows no more

} // namespace

void History::setLength(double seconds) {
    if (!(seconds >= 0) || !std::isfinite(seconds))
        throw std::invalid_argument("the length of the history must be 0 or a positive number of seconds");
    m_length = seconds;
    if (seconds == 0)
        clear();
}

void History::clear() {
    m_entries.clear();
    m_bytes = 0;
    m_present = 0;
}

void History::store(hyxSDK::Simulation const& simulation) {
    if (m_length == 0)
        return;
    if (simulation.getStructureRevision() != m_revision)
        clear();
    m_revision = simulation.getStructureRevision();
    double const now = simulation.getTimeStamp();
    while (!m_entries.empty() && m_entries.back().time >= now) {
        m_bytes -= m_entries.back().state.size();
        m_entries.pop_back();
    }
    if (!m_entries.empty() && now - m_entries.back().time < shortestGap)
        return;
    m_entries.push_back({now, simulation.saveState()});
    m_bytes += m_entries.back().state.size();
    while (m_entries.size() > 1 && (m_bytes > mostBytes || now - m_entries.front().time > m_length)) {
        m_bytes -= m_entries.front().state.size();
        m_entries.pop_front();
    }
    m_present = m_entries.size() - 1;
}

bool History::move(hyxSDK::Simulation& simulation, int states) {
    if (m_entries.empty() || simulation.getStructureRevision() != m_revision)
        return false;
    auto const last = std::ptrdiff_t(m_entries.size()) - 1;
    size_t const next = size_t(std::clamp(std::ptrdiff_t(m_present) + states, std::ptrdiff_t(0), last));
    if (next == m_present && simulation.getTimeStamp() == m_entries[next].time)
        return false;
    show(simulation, next);
    return true;
}

bool History::moveTo(hyxSDK::Simulation& simulation, double time) {
    if (m_entries.empty() || simulation.getStructureRevision() != m_revision)
        return false;
    auto const later = std::upper_bound(m_entries.begin(), m_entries.end(), time + 1e-9,
                                        [](double t, Entry const& entry) { return t < entry.time; });
    show(simulation, later == m_entries.begin() ? 0 : size_t(later - m_entries.begin()) - 1);
    return true;
}

void History::show(hyxSDK::Simulation& simulation, size_t index) {
    m_present = index;
    simulation.restoreState(m_entries[index].state);
}

std::optional<std::pair<double, double>> History::span() const {
    if (m_entries.empty())
        return std::nullopt;
    return std::pair(m_entries.front().time, m_entries.back().time);
}

} // namespace hyxOSG
