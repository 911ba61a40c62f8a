// Lists of numbers.
#include "binding/vocabulary/lists.h"
#include "binding/vocabulary/rows.h"
#include "platform/hyx/values/vector.h"

namespace {

constexpr Declared real_vector_rows[] = {
    LIST_ROWS(hyx::RealVector, RealVector, double, PLAIN),
    BUFFER_ROW(hyx::RealVector, RealVector),
};

} // namespace

ROWS(real_vector_rows);
