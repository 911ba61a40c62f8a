// Takes over the processors that the thread may use now.
#include "reference/machinery/viewing/processors.h"

#include <sched.h>

namespace hyxOSG {

void keepProcessors(osgViewer::ViewerBase& viewer) {
    OpenThreads::Affinity processors;
    cpu_set_t allowed;
    if (sched_getaffinity(0, sizeof allowed, &allowed) == 0)
        for (int number = 0; number < CPU_SETSIZE; ++number)
            if (CPU_ISSET(number, &allowed))
                processors.add(number);
    viewer.setUseConfigureAffinity(false);
    viewer.setProcessorAffinity(processors);
}

} // namespace hyxOSG
