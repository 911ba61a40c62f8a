// Notes that conversions have run code of the user.
#pragma once

namespace runtime {

// How often conversions have called what may be code of the user, which can delete what others have converted.
inline unsigned long user_code_runs = 0;

} // namespace runtime
