// Animations of single WebP pictures whose encoder has not come to their end.
#pragma once

#include <string>

namespace hyxOSG {

/// Lets the size at the front of the file cover all of its whole pictures, where the encoder was killed or had no room
/// to say it; readers pass over what is behind that. Leaves whole files, and others, as they are.
void closeWebpFilm(std::string const& file);

} // namespace hyxOSG
