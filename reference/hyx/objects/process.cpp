// What a process does in a step unless it says otherwise: nothing.
#include "platform/hyx/objects/process.h"

namespace hyx {

void Process::preStep(TimeStamp, Real) {}

void Process::postStep(TimeStamp, Real) {}

} // namespace hyx
