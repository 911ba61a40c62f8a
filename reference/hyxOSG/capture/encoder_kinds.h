// What each encoder wants to be told.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace hyxOSG {

struct EncoderKind {
    std::string_view name; ///< or a part of it
    /// The format of its pixels.
    std::string_view pixels = "yuv420p";
    /// Lets it keep pace with drawing and hold few frames back, which are lost when it is killed.
    std::vector<std::string> pace = {};
    /// The option that takes the quality, with its values for the rate factors 0 and 51; "" for none.
    std::string_view quality = "";
    double best = 0;
    double worst = 0;
    /// What makes it lose nothing; not there for those that cannot.
    std::optional<std::vector<std::string>> lossless = std::nullopt;
    /// The format of pixels with alpha, and what else it takes; "" for those that cannot.
    std::string_view alphaPixels = "";
    std::vector<std::string> alphaOptions = {};
};

/// Whether a format of pixels has colour differences in place of red, green and blue.
inline bool hasColorDifferences(std::string_view pixels) {
    return pixels.starts_with("yuv") || pixels.starts_with("nv") || pixels.starts_with("p0");
}

/// The kind of an encoder by its name. Unknown ones get 4:2:0 and are left to their own settings.
EncoderKind const& encoderKind(std::string_view name);

} // namespace hyxOSG
