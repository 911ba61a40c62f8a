// Putting the encoder's arguments together.

#include "reference/hyxOSG/capture/encoder_command.h"

#include "reference/hyxOSG/capture/encoder_kinds.h"
#include "reference/hyxOSG/capture/encoder_program.h"
#include "reference/hyxOSG/capture/film_container.h"

#include <cmath>
#include <filesystem>
#include <stdexcept>

namespace hyxOSG {
namespace {

using Options = std::vector<std::string>;

constexpr double largestRateFactor = 51;

/// The simplest fraction within a billionth: 24000/1001 stays what it is.
std::string rateText(double rate) {
    constexpr double closeness = 1e-9, largest = 1e6;
    double numerator = std::floor(rate), denominator = 1, formerNumerator = 1, formerDenominator = 0, rest = rate;
    while (std::abs(numerator / denominator - rate) > closeness * rate) {
        rest = 1 / (rest - std::floor(rest));
        double const digit = std::floor(rest);
        double const next = digit * denominator + formerDenominator;
        if (next > largest) {
            break;
        }
        formerNumerator = std::exchange(numerator, digit * numerator + formerNumerator);
        formerDenominator = std::exchange(denominator, next);
    }
    return std::to_string(std::llround(numerator)) + "/" + std::to_string(std::llround(denominator));
}

/// The format of the film's pixels.
std::string pixelFormat(EncoderSettings const& settings, EncoderKind const& kind) {
    if (!settings.pixels.empty())
        return settings.pixels;
    if (settings.alpha && kind.alphaPixels.empty())
        throw std::runtime_error("the encoder \"" + settings.encoderName +
                                 "\" keeps no alpha: choose prores_ks, libvpx-vp9, ffv1, png or libwebp_anim");
    return std::string(settings.alpha ? kind.alphaPixels : kind.pixels);
}

std::string filters(EncoderSettings const& settings, EncoderKind const& kind) {
    std::string const format = pixelFormat(settings, kind);
    std::string const pixels = ",format=" + format;
    // The filter repeats and leaves out frames evenly; the option "-r" would add some at the end.
    std::string const pace = settings.imageRate == settings.videoRate ? "null" : "fps=" + rateText(settings.videoRate);
    if (kind.name == "gif") { // 256 colours of each picture's own
        return pace + ",split[shown][counted];[counted]palettegen=stats_mode=single[colors];"
                      "[shown][colors]paletteuse=new=1";
    }
    if (!hasColorDifferences(format)) {
        return pace + pixels;
    }
    return pace +
           ",pad=ceil(iw/2)*2:ceil(ih/2)*2"
           ",scale=out_color_matrix=bt709:out_range=tv:flags=bicubic+accurate_rnd+full_chroma_int+full_chroma_inp" +
           pixels + ",setparams=colorspace=bt709:color_primaries=bt709:color_trc=bt709:range=tv";
}

Options colorTags(std::string const& format) {
    Options tags{"-color_primaries", "bt709", "-color_trc", "bt709"};
    if (hasColorDifferences(format)) {
        tags.insert(tags.end(), {"-colorspace", "bt709", "-color_range", "tv"});
    }
    return tags;
}

Options quality(EncoderSettings const& settings, EncoderKind const& kind) {
    if (settings.lossless) {
        if (!kind.lossless) {
            throw std::runtime_error("the encoder \"" + settings.encoderName +
                                     "\" cannot be lossless: choose OutputCodec_H264RGB, or disable lossless");
        }
        return *kind.lossless;
    }
    if (settings.bitrate > 0) {
        return {"-b:v", std::to_string(std::llround(settings.bitrate))};
    }
    if (kind.quality.empty()) {
        return {};
    }
    double const share = double(settings.rateFactor) / largestRateFactor;
    return {std::string(kind.quality), std::to_string(std::lround(kind.best + share * (kind.worst - kind.best)))};
}

/// Words that come later win.
Options chosenByScript(EncoderSettings const& settings, EncoderKind const& kind) {
    Options options = settings.alpha ? kind.alphaOptions : Options{};
    if (!settings.preset.empty()) {
        options.insert(options.end(), {"-preset", settings.preset});
    }
    options.insert(options.end(), settings.options.begin(), settings.options.end());
    return options;
}

Options container(EncoderSettings const& settings, FilmContainer const& kind) {
    if (settings.videoRate > kind.mostFrames) {
        throw std::runtime_error("a film in \"" + std::filesystem::path(settings.file).extension().string() +
                                 "\" can have " + std::to_string(std::lround(kind.mostFrames)) +
                                 " frames a second at most: choose \".mp4\", or a lower rate");
    }
    for (std::string_view const name : kind.unreadable)
        if (settings.encoderName.find(name) != std::string::npos)
            throw std::runtime_error("films of \"" + settings.encoderName + "\" cannot be read from \"" +
                                     std::string(kind.ending) + "\": choose another ending or encoder");
    Options options{"-flush_packets", "1"};
    options.insert(options.end(), kind.pieces.begin(), kind.pieces.end());
    return options;
}

/// The asked one where the container takes it. Those of the codecs go into none that browsers know by another encoder.
std::string chosenEncoder(EncoderSettings const& settings, FilmContainer const& container) {
    auto const& named = settings.encoderName;
    bool const isOfCodecs = named.starts_with("libx26") || named.find("xvid") != std::string::npos;
    return container.encoder.empty() || !isOfCodecs ? named : std::string(container.encoder);
}

} // namespace

std::vector<std::string> encoderCommand(EncoderSettings const& asked) {
    FilmContainer const& file = filmContainer(std::filesystem::path(asked.file).extension().string());
    EncoderSettings settings = asked;
    settings.encoderName = chosenEncoder(asked, file);
    EncoderKind const& kind = encoderKind(settings.encoderName);
    std::vector<std::string> command{encoderProgram(),
                                     "-nostdin",
                                     "-hide_banner",
                                     "-nostats",
                                     "-loglevel",
                                     "error",
                                     "-y",
                                     "-f",
                                     "rawvideo",
                                     "-pixel_format",
                                     settings.alpha ? "rgba" : "rgb24",
                                     "-video_size",
                                     std::to_string(settings.width) + "x" + std::to_string(settings.height),
                                     "-framerate",
                                     rateText(settings.imageRate),
                                     "-i",
                                     "pipe:0",
                                     "-an",
                                     "-c:v",
                                     settings.encoderName,
                                     "-fps_mode",
                                     "passthrough",
                                     "-vf",
                                     filters(settings, kind)};
    for (Options const& options :
         {kind.pace, quality(settings, kind), chosenByScript(settings, kind), colorTags(pixelFormat(settings, kind)),
          container(settings, file),
          // A name that begins with a dash or holds a colon would be taken for an option or a protocol.
          Options{"file:" + settings.file}}) {
        command.insert(command.end(), options.begin(), options.end());
    }
    for (std::string const& word : command)
        if (word.find('\0') != std::string::npos) // the program would see what stands before it
            throw std::invalid_argument("the name of a film, its encoder and options have no null bytes");
    return command;
}

} // namespace hyxOSG
