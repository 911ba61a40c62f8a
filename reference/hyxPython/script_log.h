// The log of the scripts of this process.
#pragma once

#include <string>

namespace hyxPython {

/// Gives a notice to Python's logger "hyx"; false where no script has set up where logs go. `level` is one of
/// `hyx::Notify`.
bool logForScripts(int level, std::string const& text);

} // namespace hyxPython
