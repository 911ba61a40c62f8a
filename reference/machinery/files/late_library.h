// Parts of the implementation in libraries of their own, because what they need would cost every start time.
#pragma once

namespace hyx {

/// What the library of this name beside this one offers by `symbol`. The library is loaded for good. Throws
/// std::runtime_error, which names `purpose`, where it cannot be.
void* findLate(char const* library, char const* symbol, char const* purpose);

} // namespace hyx
