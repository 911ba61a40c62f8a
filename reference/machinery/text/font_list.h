// The system's list of fonts.
#pragma once

#include <optional>
#include <string>

namespace hyxOSG {

/// A face in the list.
struct ListedFace {
    std::string file;
    int index = 0;             ///< among the faces of the file
    std::string family;        ///< as the list calls it
    bool isSubstitute = false; ///< for a family that is not installed
};

/// The face for a name such as "DejaVu Sans", "DejaVuSans:bold" or "DejaVuSans.ttf". The list has a substitute for
/// every family, but none for a file.
std::optional<ListedFace> findListed(std::string const& name);

} // namespace hyxOSG
