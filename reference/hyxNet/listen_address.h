// The address that a service listens on.
#pragma once

#include <string>

namespace hyxNet {

/// The numeric address for what a script names: the loopback address for nothing and for "localhost".
inline std::string listenAddress(std::string const& name) {
    return name.empty() || name == "localhost" ? "127.0.0.1" : name;
}

} // namespace hyxNet
