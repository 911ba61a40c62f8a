// The processors that a viewer leaves to the script.
#pragma once

#include <osgViewer/ViewerBase>

namespace hyxOSG {

/// Lets the thread that draws, and all that it starts, keep its processors. The viewer library would tie it to the
/// first one: other scripts and the encoder then share that.
void keepProcessors(osgViewer::ViewerBase& viewer);

} // namespace hyxOSG
