// Reads colours from names and digits.
#include "platform/hyxRender/color.h"

#include <algorithm>
#include <cctype>
#include <stdexcept>
#include <string_view>

namespace hyxRender {

namespace {

struct NamedColor {
    std::string_view name;
    std::string_view digits;
};

constexpr NamedColor namedColors[] = {
    {"aqua", "00ffff"},       {"beige", "f5f5dc"},      {"black", "000000"},       {"blue", "0000ff"},
    {"brown", "a52a2a"},      {"chocolate", "d2691e"},  {"coral", "ff7f50"},       {"crimson", "dc143c"},
    {"cyan", "00ffff"},       {"darkblue", "00008b"},   {"darkgray", "a9a9a9"},    {"darkgreen", "006400"},
    {"darkorange", "ff8c00"}, {"darkred", "8b0000"},    {"deepskyblue", "00bfff"}, {"dimgray", "696969"},
    {"fuchsia", "ff00ff"},    {"gold", "ffd700"},       {"gray", "808080"},        {"green", "008000"},
    {"indigo", "4b0082"},     {"ivory", "fffff0"},      {"khaki", "f0e68c"},       {"lightblue", "add8e6"},
    {"lightgray", "d3d3d3"},  {"lightgreen", "90ee90"}, {"lime", "00ff00"},        {"magenta", "ff00ff"},
    {"maroon", "800000"},     {"navy", "000080"},       {"olive", "808000"},       {"orange", "ffa500"},
    {"orchid", "da70d6"},     {"pink", "ffc0cb"},       {"plum", "dda0dd"},        {"purple", "800080"},
    {"red", "ff0000"},        {"salmon", "fa8072"},     {"sienna", "a0522d"},      {"silver", "c0c0c0"},
    {"skyblue", "87ceeb"},    {"slategray", "708090"},  {"steelblue", "4682b4"},   {"tan", "d2b48c"},
    {"teal", "008080"},       {"tomato", "ff6347"},     {"turquoise", "40e0d0"},   {"violet", "ee82ee"},
    {"wheat", "f5deb3"},      {"white", "ffffff"},      {"yellow", "ffff00"},      {"yellowgreen", "9acd32"},
};

float channel(std::string_view digits, std::size_t index) {
    return static_cast<float>(std::stoi(std::string(digits.substr(2 * index, 2)), nullptr, 16)) / 255.0f;
}

Color fromDigits(std::string_view digits) {
    return Color(channel(digits, 0), channel(digits, 1), channel(digits, 2),
                 digits.size() == 8 ? channel(digits, 3) : 1);
}

bool areDigits(std::string_view text) {
    return (text.size() == 6 || text.size() == 8) &&
           std::all_of(text.begin(), text.end(), [](unsigned char c) { return std::isxdigit(c); });
}

Color parse(hyx::String const& name) {
    std::string lower = name;
    std::transform(lower.begin(), lower.end(), lower.begin(), [](unsigned char c) { return std::tolower(c); });
    if (lower.starts_with('#') && areDigits(std::string_view(lower).substr(1)))
        return fromDigits(std::string_view(lower).substr(1));
    for (NamedColor const& color : namedColors)
        if (color.name == lower)
            return fromDigits(color.digits);
    throw std::invalid_argument(
        "'" + name + "' is no colour; give an HTML name such as \"orange\", or \"#rrggbb\" or \"#rrggbbaa\"");
}

} // namespace

Color::Color(hyx::String const& name) : Color(parse(name)) {}

} // namespace hyxRender
