// Numbers the bodies that sensors have seen.
#include "platform/hyx/bodies/body_identity.h"

#include "platform/hyx/bodies/rigid_body.h"

#include <map>

namespace hyx {
namespace {

/// Each body is held, so that its address stays its own.
struct IdentifiedBodies {
    std::map<ref_ptr<RigidBody>, std::uint32_t> identities;
    std::uint32_t last = 0;
};

IdentifiedBodies& identifiedBodies() {
    static auto* const all = new IdentifiedBodies; // outlives scripts that end late
    return *all;
}

} // namespace

std::uint32_t bodyIdentity(RigidBody& body) {
    IdentifiedBodies& all = identifiedBodies();
    auto const [place, isNew] = all.identities.try_emplace(&body, all.last + 1);
    all.last += isNew;
    return place->second;
}

RigidBody* identifiedBody(std::uint32_t identity) {
    for (auto const& [body, known] : identifiedBodies().identities)
        if (known == identity)
            return body.get();
    return nullptr;
}

void sweepIdentities() {
    std::erase_if(identifiedBodies().identities,
                  [](auto const& entry) { return entry.first->getReferenceCount() == 1; });
}

} // namespace hyx
