// The table of encoders.
#include "reference/hyxOSG/capture/encoder_kinds.h"

#include <array>

namespace hyxOSG {
namespace {

using Options = std::vector<std::string>;

// Few frames are looked ahead, for what an encoder holds back is lost when it is killed; each thread holds one back,
// too.
Options const x264Pace{"-preset",      "veryfast",         "-bf",      "1", "-rc-lookahead", "1",
                       "-x264-params", "sync-lookahead=0", "-threads", "4"};
constexpr char const* x265Parameters = "log-level=error:rc-lookahead=1:bframes=0:frame-threads=1";

/// The first whose name is part of an encoder's stands for it; the last for all.
std::array const kinds{
    EncoderKind{"libx264rgb", "rgb24", x264Pace, "-crf", 0, 51, Options{"-qp", "0"}},
    EncoderKind{"libx264", "yuv420p", x264Pace, "-crf", 0, 51, Options{"-qp", "0"}},
    EncoderKind{"libx265", "yuv420p", Options{"-preset", "veryfast", "-x265-params", x265Parameters}, "-crf", 0, 51,
                Options{"-x265-params", std::string(x265Parameters) + ":lossless=1"}},
    EncoderKind{"libsvtav1", "yuv420p", Options{"-preset", "9", "-svtav1-params", "pred-struct=1:lookahead=0"}, "-crf",
                1, 63},
    EncoderKind{"libaom-av1", "yuv420p", Options{"-usage", "realtime", "-cpu-used", "8", "-row-mt", "1", "-b:v", "0"},
                "-crf", 1, 63},
    EncoderKind{"libvpx-vp9", "yuv420p",
                Options{"-deadline", "realtime", "-cpu-used", "5", "-row-mt", "1", "-lag-in-frames", "0", "-b:v", "0"},
                "-crf", 1, 63, Options{"-lossless", "1"}, "yuva420p", Options{"-auto-alt-ref", "0"}},
    EncoderKind{"xvid", "yuv420p", Options{}, "-q:v", 1, 31},
    EncoderKind{"mpeg4", "yuv420p", Options{}, "-q:v", 1, 31},
    EncoderKind{"libwebp", "bgra", Options{}, "-q:v", 100, 0, Options{"-lossless", "1"}, "bgra"},
    EncoderKind{"prores", "yuv422p10le", Options{"-profile:v", "3"}, "", 0, 0, std::nullopt, "yuva444p10le",
                Options{"-profile:v", "4444", "-alpha_bits", "16"}},
    EncoderKind{"gif", "pal8"},
    EncoderKind{"ffv1", "bgr0", Options{}, "", 0, 0, Options{}, "bgra"},
    EncoderKind{"png", "rgb24", Options{}, "", 0, 0, Options{}, "rgba"},
    EncoderKind{"qtrle", "rgb24", Options{}, "", 0, 0, Options{}, "argb"},
    EncoderKind{"_nvenc", "yuv420p", Options{"-preset", "p4", "-delay", "0", "-rc", "vbr", "-b:v", "0"}, "-cq", 1, 51,
                Options{"-tune", "lossless"}},
    EncoderKind{"_qsv", "nv12", Options{"-async_depth", "1"}, "-global_quality", 1, 51},
    EncoderKind{""},
};

} // namespace

EncoderKind const& encoderKind(std::string_view name) {
    for (EncoderKind const& kind : kinds) {
        if (name.find(kind.name) != std::string_view::npos) {
            return kind;
        }
    }
    return kinds.back();
}

} // namespace hyxOSG
