// All row tables of a module. The list is made by the build from the files that hold rows.
#pragma once

#include "wrappers/vocabulary/record.h"

namespace module {

extern wrappers::Rows const *const areas[];
extern std::size_t const area_count;

} // namespace module
