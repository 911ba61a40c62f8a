// The display of the windowing system.
#pragma once

namespace hyxOSG {

/// Whether the X server that the variable DISPLAY names answers. The connection of the probe stays open: some servers
/// end with their last client.
bool xDisplayAnswers();

} // namespace hyxOSG
