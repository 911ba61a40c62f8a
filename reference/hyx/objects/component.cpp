// Keeps the tree of components in order: parents, names, one place for each object.
#include "platform/hyx/objects/component.h"

#include "reference/hyxPython/script_errors.h"

#include <algorithm>
#include <iostream>
#include <stdexcept>
#include <string>
#include <unordered_map>

namespace hyx {

namespace {

/// Walks through a tree recur.
constexpr unsigned mostComponentLevels = 1000;

/// The levels of what is below each component on the way, itself included.
using Levels = std::unordered_map<Component const*, unsigned>;

unsigned levelsBelow(Component const& component, Levels& known) {
    if (auto const place = known.find(&component); place != known.end())
        return place->second;
    unsigned below = 0;
    for (auto const& object : component.getObjects())
        if (auto const* part = dynamic_cast<Component const*>(object.get()))
            below = std::max(below, levelsBelow(*part, known));
    return known[&component] = below + 1;
}

unsigned levelsAbove(Component const& component) {
    unsigned levels = 1;
    for (auto const* above = dynamic_cast<Component const*>(component.getContext());
         above && levels <= mostComponentLevels; above = dynamic_cast<Component const*>(above->getContext()))
        ++levels;
    return levels;
}

void requireContainable(Component const& container, Component const& part) {
    Levels below;
    unsigned const levels = levelsBelow(part, below);
    if (below.contains(&container))
        throw std::invalid_argument("a component cannot contain itself");
    if (levelsAbove(container) + levels > mostComponentLevels)
        throw std::invalid_argument("components can be at most " + std::to_string(mostComponentLevels) +
                                    " levels deep");
}

} // namespace

Component::~Component() {
    for (auto const& object : m_objects)
        if (auto* component = dynamic_cast<Component*>(object.get())) {
            try {
                component->setContext(nullptr);
            } catch (...) { // an override of a script: nobody is there to be told but the log
                hyxPython::takeScriptError("setContext");
            }
        }
}

void Component::printSubtree() const {
    printIndented(0);
}

void Component::printIndented(unsigned depth) const {
    std::string const indent(2 * depth, ' ');
    std::cout << indent << (getName().empty() ? "(unnamed)" : getName()) << '\n';
    for (auto const& object : m_objects) {
        if (auto const* component = dynamic_cast<Component const*>(object.get()))
            component->printIndented(depth + 1);
        else
            std::cout << indent << "  " << (object->getName().empty() ? "(unnamed)" : object->getName()) << '\n';
    }
    if (depth == 0)
        std::cout << std::flush;
}

void Component::setContext(Object* context) {
    m_context = context;
    m_contextLife = context ? context->getLife() : std::weak_ptr<void const>();
}

void Component::rebind() {
    m_table.clear();
    for (auto const& object : m_objects) {
        m_table.try_emplace(object->getName(), object.get());
        if (auto* component = dynamic_cast<Component*>(object.get()))
            component->rebind();
    }
}

void Component::addObject(Object* object, bool replace) {
    if (!object || object == this || std::find(m_objects.begin(), m_objects.end(), object) != m_objects.end())
        return;
    auto* component = dynamic_cast<Component*>(object);
    if (component)
        requireContainable(*this, *component);
    if (replace)
        removeObject(findObject(object->getName()));
    m_objects.push_back(object);
    m_table.try_emplace(object->getName(), object);
    if (component)
        component->setContext(this);
}

void Component::removeObject(Object* object) {
    auto const place = std::find(m_objects.begin(), m_objects.end(), object);
    if (!object || place == m_objects.end())
        return;
    ref_ptr<Object> const kept = *place;
    m_objects.erase(place);
    std::erase_if(m_table, [object](auto const& entry) { return entry.second == object; });
    for (auto const& other : m_objects)
        if (other->getName() == kept->getName())
            m_table.try_emplace(other->getName(), other.get());
    if (auto* component = dynamic_cast<Component*>(object))
        component->setContext(nullptr);
}

Object* Component::findObject(Name const& name) const {
    return m_table.get(name);
}

} // namespace hyx
