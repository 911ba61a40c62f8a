// The tree of named parts that robots and machines are described by.
#pragma once

#include "platform/hyx/objects/object.h"
#include "platform/hyx/values/hash_table.h"
#include "platform/hyx/values/vector.h"

namespace hyx {

/// A named object that may contain others: one knot of the tree of objects in a model. It holds references to what it
/// contains.
class Component : public Object {
public:
    Component() = default;

    explicit Component(Name const& name) : Object(name) {}

    /// Writes this object's name and, indented, the names of all it contains to standard output.
    virtual void printSubtree() const;
    /// Tells this object which object contains it; null when none does. The container is not kept alive;
    /// when it ends, this is null again.
    virtual void setContext(Object* context);

    Object* getContext() const { return m_contextLife.expired() ? nullptr : m_context; }

    /// Looks names up anew after objects were renamed; does so in every contained component.
    virtual void rebind();
    /// Takes an object in. With `replace` an object of the same name goes out first; without it two may bear one name
    /// and the first is found. Null and objects already here are ignored. Throws `std::invalid_argument` for a
    /// component that contains this one, and beyond 1000 levels.
    virtual void addObject(Object* object, bool replace);
    /// Lets an object go; one that is not here is ignored.
    virtual void removeObject(Object* object);

    /// The first object of that name, or null.
    Object* findObject(Name const& name) const;

    /// What is in the component.
    Vector<ref_ptr<Object>> const& getObjects() const { return m_objects; }

    /// What this contains, by name.
    ObjectPtrTable const& getObjectTable() const { return m_table; }

protected:
    ~Component() override;

private:
    void printIndented(unsigned depth) const;

    Object* m_context = nullptr;
    std::weak_ptr<void const> m_contextLife;
    Vector<ref_ptr<Object>> m_objects;
    ObjectPtrTable m_table;
};

} // namespace hyx
