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
    std::string preset;               ///< "" for that of the kind
    double bitrate = 0;               ///< bits a second, in place of the rate factor; 0 for none
    std::string pixels;               ///< "" for those of the kind
    std::vector<std::string> options; ///< further words for the encoder
    bool alpha = false;               ///< frames have a fourth byte
    std::string file;
};

/// The program and its arguments for frames of three or, with alpha, four bytes a pixel, upper row first, on standard
/// input.
/// \throws std::runtime_error for what the encoder or the container cannot do
std::vector<std::string> encoderCommand(EncoderSettings const& settings);

} // namespace hyxOSG
