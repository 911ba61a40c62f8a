// How far one notch of the wheel takes a camera.
#pragma once

namespace hyxOSG {

/// Share of the distance; turned away from the user the wheel goes nearer.
inline constexpr double wheelZoom = -0.1;

} // namespace hyxOSG
