// Orders and joins letters, line by line.
#include "reference/machinery/text/drawn_text.h"

#include "reference/machinery/text/text_length.h"

#include <fribidi.h>

#include <algorithm>
#include <stdexcept>
#include <vector>

namespace hyxOSG {
namespace {

// Letters before the Hebrew ones have no other order than that of the text.
constexpr unsigned int firstTurned = 0x590;

void appendLine(osgText::String& drawn, std::vector<FriBidiChar> const& line) {
    std::vector<FriBidiChar> shown(line.size() + 1);
    FriBidiParType direction = FRIBIDI_PAR_ON; // that of the first letter that has one
    auto length = static_cast<FriBidiStrIndex>(line.size());
    if (!fribidi_log2vis(line.data(), length, &direction, shown.data(), nullptr, nullptr, nullptr))
        throw std::runtime_error("there is no memory for the order of a text");
    length = fribidi_remove_bidi_marks(shown.data(), length, nullptr, nullptr, nullptr);
    // Where two letters were joined into one, a filler stands for the second.
    std::copy_if(shown.begin(), shown.begin() + length, std::back_inserter(drawn),
                 [](FriBidiChar letter) { return letter != FRIBIDI_CHAR_FILL; });
}

} // namespace

osgText::String drawnText(std::string const& text) {
    osgText::String const letters(requireDrawable(text), osgText::String::ENCODING_UTF8);
    if (std::none_of(letters.begin(), letters.end(), [](unsigned int letter) { return letter >= firstTurned; }))
        return letters;
    osgText::String drawn;
    for (auto begin = letters.begin();;) {
        auto const end = std::find(begin, letters.end(), '\n');
        appendLine(drawn, {begin, end});
        if (end == letters.end())
            return drawn;
        drawn.push_back('\n');
        begin = end + 1;
    }
}

} // namespace hyxOSG
