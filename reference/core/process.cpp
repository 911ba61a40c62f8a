#include "platform/hyx/process.h"

namespace hyx {

void Process::preStep(TimeStamp, Real) {}

void Process::postStep(TimeStamp, Real) {}

}
