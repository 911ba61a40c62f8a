// The log and the warnings of the scripts of this process.
#pragma once

#include <string>

namespace hyxPython {

/// Gives a notice to Python's logger "hyx"; false where no script has set up where logs go. `level` is one of
/// `hyx::Notify`.
bool logForScripts(int level, std::string const& text);

/// Issues a RuntimeWarning at the line that called; false where no script has, or an error is on its way to it already.
/// Where the script has made warnings errors, the error is pending then.
bool warnScript(std::string const& text);

} // namespace hyxPython
