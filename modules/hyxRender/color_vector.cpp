// Lists of colours.
#include "binding/vocabulary/lists.h"
#include "binding/vocabulary/rows.h"
#include "platform/hyxRender/color.h"

namespace {

constexpr Declared color_vector_rows[] = {
    LIST_ROWS(hyxRender::ColorVector, ColorVector, hyxRender::Color const&, PLAIN),
    BUFFER_ROW(hyxRender::ColorVector, ColorVector),
};

} // namespace

ROWS(color_vector_rows);
