// What each kind of file wants of a film.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace hyxOSG {

struct FilmContainer {
    std::string_view ending;
    /// Frames a second that it can keep.
    double mostFrames = 1000;
    /// Has the file written in pieces that can be read without what comes after them: what was encoded stays when the
    /// encoder is killed or the disk is full.
    std::vector<std::string> pieces = {};
    /// The only encoder that browsers play in it; "" where it takes those of the codecs.
    std::string_view encoder = "";
    /// Makes what an encoder has left readable, however it ended; nothing where `pieces` are enough.
    void (*mend)(std::string const& file) = nullptr;
    /// Parts of the names of encoders whose films nothing reads from it, although it takes them.
    std::vector<std::string_view> unreadable = {};
};

/// By the ending of a file, with its dot. Unknown ones are left to the encoder's own knowledge.
FilmContainer const& filmContainer(std::string_view ending);

} // namespace hyxOSG
