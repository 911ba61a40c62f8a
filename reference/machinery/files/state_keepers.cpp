// The list of those who save a state.
#include "reference/machinery/files/state_keepers.h"

#include <mutex>
#include <unordered_map>

namespace hyx {

namespace {

/// Simulations may be made and stepped in several threads.
struct StateKeepers {
    std::mutex mutex;
    std::unordered_map<void const*, StateExchange> all;
};

/// Never ends, as owners may end after everything else.
StateKeepers& stateKeepers() {
    static StateKeepers* const keepers = new StateKeepers;
    return *keepers;
}

} // namespace

void keepState(void const* owner, StateExchange exchange) {
    std::lock_guard const lock(stateKeepers().mutex);
    stateKeepers().all[owner] = std::move(exchange);
}

void forgetState(void const* owner) {
    std::lock_guard const lock(stateKeepers().mutex);
    stateKeepers().all.erase(owner);
}

void exchangeState(void const* owner, StateBytes& bytes) {
    StateExchange exchange;
    {
        std::lock_guard const lock(stateKeepers().mutex);
        auto const found = stateKeepers().all.find(owner);
        if (found != stateKeepers().all.end())
            exchange = found->second;
    }
    if (exchange)
        exchange(bytes);
}

} // namespace hyx
