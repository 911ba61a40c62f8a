// Rows of ScalarColorMap.
#include "platform/hyxOSG/renderers/scalar_color_map.h"

#include "binding/vocabulary/rows.h"

namespace {

constexpr Declared scalar_color_map_rows[] = {
    FUNCTION(new_ScalarColorMap, NEW(hyxOSG::ScalarColorMap, ()),
             NEW(hyxOSG::ScalarColorMap, (hyxRender::ColorVector const&, double, double)),
             NEW(hyxOSG::ScalarColorMap, (hyxOSG::ScalarColorMap::ColorRangePreset, double, double))),
    FUNCTION(ScalarColorMap_setColorsFromPreset,
             METHOD(hyxOSG::ScalarColorMap, setColorsFromPreset, (hyxOSG::ScalarColorMap::ColorRangePreset))),
    FUNCTION(ScalarColorMap_setColors, METHOD(hyxOSG::ScalarColorMap, setColors, (hyxRender::ColorVector const&))),
    FUNCTION(ScalarColorMap_getColors, METHOD(hyxOSG::ScalarColorMap, getColors, () const)),
    FUNCTION(ScalarColorMap_setMinScalar, METHOD(hyxOSG::ScalarColorMap, setMinScalar, (double))),
    FUNCTION(ScalarColorMap_setMaxScalar, METHOD(hyxOSG::ScalarColorMap, setMaxScalar, (double))),
    FUNCTION(ScalarColorMap_setScalarInterval, METHOD(hyxOSG::ScalarColorMap, setScalarInterval, (double, double))),
    FUNCTION(ScalarColorMap_getMinScalar, METHOD(hyxOSG::ScalarColorMap, getMinScalar, () const)),
    FUNCTION(ScalarColorMap_getMaxScalar, METHOD(hyxOSG::ScalarColorMap, getMaxScalar, () const)),
    FUNCTION(ScalarColorMap_getColor, METHOD(hyxOSG::ScalarColorMap, getColor, (double, bool) const, true)),
    FUNCTION(ScalarColorMap_getColorOSG, METHOD(hyxOSG::ScalarColorMap, getColorOSG, (double, bool) const, true)),
    FUNCTION(ScalarColorMap_getOsgColorRange, METHOD(hyxOSG::ScalarColorMap, getOsgColorRange, () const)),
    REGISTER(hyxOSG::ScalarColorMap, ScalarColorMap),
    INIT(ScalarColorMap),
};

} // namespace

ROWS(scalar_color_map_rows);
