// Knows packages by the blocks of letters.
#include "reference/machinery/text/letter_packages.h"

#include <algorithm>
#include <array>

namespace hyxOSG {

std::string packageFor(unsigned int letter) {
    struct Block {
        unsigned int first, last;
        char const* package;
    };

    constexpr char const* eastAsia = "fonts-noto-cjk";
    constexpr char const* korean = "fonts-nanum";
    constexpr char const* pictures = "fonts-symbola"; // in one colour
    constexpr char const* others = "fonts-noto-core";
    constexpr std::array blocks{
        Block{0x1100, 0x11ff, korean},     Block{0x2600, 0x27bf, pictures}, Block{0x2e80, 0x9fff, eastAsia},
        Block{0xac00, 0xd7ff, korean},     Block{0xe000, 0xf8ff, ""},       Block{0xf900, 0xfaff, eastAsia},
        Block{0xfe30, 0xfe4f, eastAsia},   Block{0xff00, 0xffef, eastAsia}, Block{0x1f000, 0x1faff, pictures},
        Block{0x20000, 0x3ffff, eastAsia}, Block{0xf0000, 0x10ffff, ""},
    };
    auto const* const block = std::find_if(blocks.begin(), blocks.end(),
                                           [=](Block const& b) { return letter >= b.first && letter <= b.last; });
    return block == blocks.end() ? others : block->package;
}

} // namespace hyxOSG
