// Which ffmpeg encodes films.
#pragma once

#include <string>

namespace hyxOSG {

/// The system's ffmpeg where there is one, else that of the Python package imageio-ffmpeg, else the bare name.
std::string encoderProgram();

} // namespace hyxOSG
