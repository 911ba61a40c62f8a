// The clock that the parts of a model share.
#pragma once

#include "platform/hyx/objects/component.h"

namespace hyx {

/// A source of time in a model, as the library makes it.
class Clock : public Component {
public:
    using Component::Component;

protected:
    ~Clock() override = default;
};

} // namespace hyx
