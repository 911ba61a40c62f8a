// Rows whose functions wait themselves for native work of other threads, by an `OwnTurn`.
#pragma once

#include "binding/vocabulary/record.h"

#include <span>

namespace vocabulary {

// Made beside the rows, before the first call.
struct WaitThemselves {
    explicit WaitThemselves(std::span<Declared const> rows);
};

// Waits for native work of other threads, unless the form does so itself.
void wait_before(Form const& form);

// Has threads that still run at the interpreter's exit rest in the library; false with a Python error set.
bool watch_exit();

} // namespace vocabulary
