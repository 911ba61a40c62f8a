// What goes between a process and the one that reads files first for it.
#pragma once

#include <cstddef>

namespace hyxOSG {

/// A request is the kind, the path, a zero and the options; an answer the fault, of one blank for none.
constexpr std::size_t longestTrialMessage = 16384;
constexpr int trialSocket = 0; ///< of the process that reads: its standard input

} // namespace hyxOSG
