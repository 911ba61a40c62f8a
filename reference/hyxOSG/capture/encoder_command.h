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
    /// Whether the codec keeps RGB; else it takes 4:2:0.
    bool rgb = false;
    /// Whether the codec is steered by a quantiser of 1 to 31 instead of a rate factor.
    bool quantiser = false;
    std::string encoderName;
    std::string file;
};

/// The program and its arguments for frames of three bytes a pixel, upper row first, on standard input.
std::vector<std::string> encoderCommand(EncoderSettings const& settings);

} // namespace hyxOSG
