// The base of everything that is shared and has a name.
#pragma once

#include "platform/hyx/objects/ref_ptr.h"
#include "platform/hyx/objects/referenced.h"
#include "platform/hyx/values/types.h"

#include <memory>

namespace hyx {

/// What ends with the object that holds it; a copy has a life of its own.
class Life {
public:
    Life() = default;

    Life(Life const&) {}

    Life& operator=(Life const&) { return *this; }

    std::weak_ptr<void const> watch() const {
        if (!m_token)
            m_token = std::make_shared<char const>();
        return m_token;
    }

private:
    mutable std::shared_ptr<void const> m_token;
};

/// A shared object with a name.
class Object : public Referenced {
public:
    Object() = default;

    explicit Object(Name const& name) : m_name(name) {}

    /// What scripts find the object by; empty at the start.
    void setName(Name const& name) { m_name = name; }

    Name const& getName() const { return m_name; }

    /// Expires with this object: for those who point to it without keeping it.
    std::weak_ptr<void const> getLife() const { return m_life.watch(); }

protected:
    ~Object() override = default;

private:
    Name m_name;
    Life m_life;
};

} // namespace hyx
