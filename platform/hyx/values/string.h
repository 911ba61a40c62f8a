// The text type of the library's interfaces.
#pragma once

#include <functional>
#include <string>

namespace hyx {

/// Text in UTF-8.
class String : public std::string {
public:
    using std::string::string;
    String() = default;

    String(std::string const& text) : std::string(text) {}

    String(std::string&& text) noexcept : std::string(std::move(text)) {}

    /// Null counts as the empty text.
    String(char const* text) : std::string(text ? text : "") {}
};

} // namespace hyx

template <>
struct std::hash<hyx::String> {
    std::size_t operator()(hyx::String const& text) const noexcept { return std::hash<std::string>()(text); }
};
