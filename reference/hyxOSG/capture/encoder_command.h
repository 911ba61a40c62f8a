// The command line of the encoder.
#pragma once

#include <string>
#include <vector>

namespace hyxOSG {

/// What a video is to be; see VideoFFMPEGPipeCapture for the meaning of each.
struct EncoderSettings {
    unsigned long width = 0;
    unsigned long height = 0;
    double imageRate = 0;
    double videoRate = 0;
    unsigned long rateFactor = 0;
    bool lossless = false;
    std::string encoderName;
    std::string file;
};

/// The program and its arguments for frames of three bytes a pixel, upper row first, on standard input.
/// \throws std::runtime_error for what the encoder or the container cannot do
std::vector<std::string> encoderCommand(EncoderSettings const& settings);

} // namespace hyxOSG
