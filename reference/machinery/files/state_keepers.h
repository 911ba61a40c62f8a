// Who has a state of his own to save.
#pragma once

#include "reference/machinery/files/state_bytes.h"

#include <functional>

namespace hyx {

/// Saves or restores all that the next steps of its owner depend on.
using StateExchange = std::function<void(StateBytes& bytes)>;

/// To be called when the owner begins and when it ends.
void keepState(void const* owner, StateExchange exchange);
void forgetState(void const* owner);

/// Nothing for an owner that keeps no state.
void exchangeState(void const* owner, StateBytes& bytes);

} // namespace hyx
