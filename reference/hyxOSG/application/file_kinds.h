// What kinds of files an application opens.
#pragma once

#include <string>

namespace hyxOSG {

enum class FileKind { NONE, SCRIPT, SCENE, MODEL, JOURNAL, STATE };

/// The kind by the file's ending; scenes are descriptions of simulations and robots, models are only drawn.
FileKind fileKind(std::string const& path);

} // namespace hyxOSG
