// Shapes as JSON.
#pragma once

#include "platform/hyxCollide/shape.h"

#include <nlohmann/json.hpp>

namespace hyx {

/// The shape's kind and measures; what has no kind of its own here is described by the box around it.
nlohmann::json describeShape(hyxCollide::Shape const& shape);

/// Throws std::exception for what is no description.
ref_ptr<hyxCollide::Shape> makeShape(nlohmann::json const& description);

} // namespace hyx
