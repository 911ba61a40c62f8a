// Look-up by name in the lists of assemblies and simulations.
#pragma once

#include "platform/hyx/objects/ref_ptr.h"
#include "platform/hyx/values/types.h"
#include "platform/hyx/values/vector.h"

namespace hyxSDK {

/// The first object of the list with the name; null when there is none.
template <class T>
T* findNamed(hyx::Vector<hyx::ref_ptr<T>> const& list, hyx::Name const& name) {
    for (auto const& object : list)
        if (object->getName() == name)
            return object.get();
    return nullptr;
}

} // namespace hyxSDK
