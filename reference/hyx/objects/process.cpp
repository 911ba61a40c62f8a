#include "platform/hyx/objects/process.h"

namespace hyx {

void Process::preStep(TimeStamp, Real) {}

void Process::postStep(TimeStamp, Real) {}

} // namespace hyx
