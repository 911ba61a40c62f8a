// Keeps the tree of components in order: parents, names, one place for each object.
#include "platform/hyx/objects/component.h"

#include <algorithm>
#include <iostream>

namespace hyx {

Component::~Component() {
    for (auto const& object : m_objects)
        if (auto* component = dynamic_cast<Component*>(object.get()))
            component->setContext(nullptr);
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
    if (replace)
        removeObject(findObject(object->getName()));
    m_objects.push_back(object);
    m_table.try_emplace(object->getName(), object);
    if (auto* component = dynamic_cast<Component*>(object))
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
