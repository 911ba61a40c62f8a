// Lists of points, in double and in single precision.
#include "platform/hyx/values/vec3_vector.h"

#include "binding/vocabulary/lists.h"
#include "binding/vocabulary/rows.h"
#include "platform/hyx/values/vec3f.h"
#include "platform/hyx/values/vector_pod.h"

namespace {

constexpr Declared vec3_vector_rows[] = {
    LIST_ROWS(hyx::Vec3Vector, Vec3Vector, hyx::Vec3 const&, PLAIN),
    BUFFER_ROW(hyx::Vec3Vector, Vec3Vector),
    LIST_ROWS(hyx::VectorPOD<hyx::Vec3f>, Vec3fVector, hyx::Vec3f const&, PLAIN),
    BUFFER_ROW(hyx::VectorPOD<hyx::Vec3f>, Vec3fVector),
};

} // namespace

ROWS(vec3_vector_rows);
