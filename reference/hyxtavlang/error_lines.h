// Where in a file an error is whose text tells only a name.
#pragma once

#include <string>

namespace hyxtavlang {

/// The first line of the file where the last name that the message quotes stands by itself; 1 where there is none.
int lineOfName(std::string const& message, std::string const& path);

} // namespace hyxtavlang
