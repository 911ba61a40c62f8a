// The base of everything that is shared and has a name.
#pragma once

#include "platform/hyx/objects/ref_ptr.h"
#include "platform/hyx/objects/referenced.h"
#include "platform/hyx/values/types.h"

namespace hyx {

/// A shared object with a name.
class Object : public Referenced {
public:
    Object() = default;

    explicit Object(Name const& name) : m_name(name) {}

    void setName(Name const& name) { m_name = name; }

    Name const& getName() const { return m_name; }

protected:
    ~Object() override = default;

private:
    Name m_name;
};

} // namespace hyx
