// The longest text that is drawn.
#pragma once

#include <stdexcept>
#include <string>

namespace hyxOSG {

/// The text itself. Each letter is drawn by itself: longer ones take the memory of the machine.
inline std::string const& requireDrawable(std::string const& text) {
    constexpr std::size_t mostBytes = 50000;
    if (text.size() > mostBytes)
        throw std::invalid_argument("a text that is drawn can have at most 50000 bytes");
    return text;
}

} // namespace hyxOSG
