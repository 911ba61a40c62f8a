// Putting the encoder's arguments together.

#include "reference/hyxOSG/capture/encoder_command.h"

#include <cstdio>

namespace hyxOSG {
namespace {

constexpr unsigned long largestRateFactor = 51;
constexpr unsigned long largestQuantiser = 31;

/// All digits, independent of the locale's decimal sign.
std::string rateText(double rate) {
    char text[64];
    std::snprintf(text, sizeof text, "%.0f/1000000", rate * 1e6);
    return text;
}

void addQuality(EncoderSettings const& settings, std::vector<std::string>& command) {
    if (settings.quantiser) {
        unsigned long const value = 1 + settings.rateFactor * (largestQuantiser - 1) / largestRateFactor;
        command.insert(command.end(), {"-q:v", std::to_string(value)});
        return;
    }
    command.insert(command.end(), {"-preset", "veryfast"});
    if (settings.lossless) {
        command.insert(command.end(), {"-qp", "0"});
    } else {
        command.insert(command.end(), {"-crf", std::to_string(settings.rateFactor)});
    }
}

} // namespace

std::vector<std::string> encoderCommand(EncoderSettings const& settings) {
    std::vector<std::string> command{
        "ffmpeg", "-nostdin", "-hide_banner", "-nostats", "-loglevel", "error", "-y", "-f", "rawvideo", "-pixel_format",
        "rgb24", "-video_size", std::to_string(settings.width) + "x" + std::to_string(settings.height), "-framerate",
        rateText(settings.imageRate), "-i", "pipe:0", "-an", "-c:v", settings.encoderName, "-pix_fmt",
        settings.rgb ? "rgb24" : "yuv420p",
        // The filter repeats and leaves out frames evenly; the option "-r" would add some at the end.
        "-vf", "fps=" + rateText(settings.videoRate) + (settings.rgb ? "" : ",pad=ceil(iw/2)*2:ceil(ih/2)*2")};
    addQuality(settings, command);
    // What is encoded is in the file at once, and not lost with the encoder.
    command.insert(command.end(), {"-flush_packets", "1"});
    if (settings.file.ends_with(".mkv")) {
        command.insert(command.end(), {"-cluster_time_limit", "500"});
    }
    // A name that begins with a dash or holds a colon would be taken for an option or a protocol.
    command.push_back("file:" + settings.file);
    return command;
}

} // namespace hyxOSG
