// The parts of an object of a model tree, by their kind.
#pragma once

#include "platform/hyxtavlang/model_objects.h"

namespace hyxtavlang {

template <class Kind>
std::vector<std::shared_ptr<Kind>> partsOf(tavlang::Core::Object const& object) {
    std::vector<std::shared_ptr<Kind>> found;
    for (auto const& child : object.children)
        if (auto part = std::dynamic_pointer_cast<Kind>(child))
            found.push_back(part);
    return found;
}

} // namespace hyxtavlang
