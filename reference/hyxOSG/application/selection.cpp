// Outlines a body and writes what is known of it.
#include "reference/hyxOSG/application/selection.h"

#include "platform/hyxCollide/geometry.h"
#include "platform/hyxOSG/nodes/geometry_node.h"
#include "platform/hyxOSG/visuals/finders.h"
#include "platform/hyxOSG/visuals/render_state.h"
#include "platform/hyxSDK/simulation.h"
#include "reference/hyxOSG/application/body_facts.h"

#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <vector>

namespace hyxOSG {
namespace {

constexpr size_t mostForces = 6; ///< lines; the strongest come first

/// A label and figures behind it.
[[gnu::format(printf, 2, 3)]] std::string factLine(std::string const& label, char const* format, ...) {
    char text[160];
    int const width = std::snprintf(text, sizeof text, "%-14.30s ", label.c_str());
    va_list figures;
    va_start(figures, format);
    std::vsnprintf(text + width, sizeof text - size_t(width), format, figures);
    va_end(figures);
    return text;
}

/// Without the sign of what is written as nothing.
double tidy(double number) {
    return std::abs(number) < 0.0005 ? 0 : number;
}

std::string vectorLine(std::string const& label, hyx::Vec3 const& v, char const* unit) {
    return factLine(label, "%9.3f %9.3f %9.3f %s", tidy(v.x), tidy(v.y), tidy(v.z), unit);
}

std::string nameOr(std::string const& name, char const* otherwise) {
    return name.empty() ? otherwise : name;
}

template <class Facts>
void addForces(std::vector<std::string>& lines, std::vector<Facts> facts, std::string const& label,
               char const* nameless) {
    std::ranges::sort(facts, [](auto const& a, auto const& b) { return a.force.length() > b.force.length(); });
    for (size_t i = 0; i < std::min(facts.size(), mostForces); ++i)
        lines.push_back(vectorLine(label + nameOr(facts[i].name, nameless), facts[i].force, "N"));
    if (facts.size() > mostForces)
        lines.push_back(factLine("", "and %zu more", facts.size() - mostForces));
}

} // namespace

void Selection::select(hyx::RigidBody* body) {
    setOutline(false);
    m_body = body;
    setOutline(true);
}

void Selection::setOutline(bool on) {
    if (!m_body)
        return;
    for (auto const& geometry : m_body->getGeometries())
        if (GeometryNode* node = findGeometryNode(geometry.get(), m_root))
            setEnableOutline(node, on);
}

hyx::RigidBody* Selection::in(hyxSDK::Simulation const& simulation) {
    if (m_body && m_body->getSimulation() != &simulation)
        select(nullptr);
    return m_body.get();
}

std::string Selection::describe(hyxSDK::Simulation const& simulation) {
    hyx::RigidBody const* body = in(simulation);
    if (!body)
        return "";
    hyx::Quat const q = body->getRotation();
    std::vector<std::string> lines = {
        nameOr(std::string(body->getName()), "a body without a name"),
        factLine("mass", "%9.3f kg", body->getMass()),
        vectorLine("position", body->getPosition(), "m"),
        factLine("rotation", "%9.3f %9.3f %9.3f %9.3f", tidy(q.x), tidy(q.y), tidy(q.z), tidy(q.w)),
        vectorLine("velocity", body->getVelocity(), "m/s"),
        vectorLine("turn rate", body->getAngularVelocity(), "rad/s")};
    addForces(lines, contactFacts(*body, simulation), "from ", "the world");
    addForces(lines, jointFacts(*body, simulation), "at ", "a joint");
    size_t longest = 0;
    for (std::string const& line : lines)
        longest = std::max(longest, line.size());
    std::string text;
    for (std::string& line : lines)
        text += (text.empty() ? "" : "\n") + line.append(longest - line.size(), ' ');
    return text;
}

} // namespace hyxOSG
