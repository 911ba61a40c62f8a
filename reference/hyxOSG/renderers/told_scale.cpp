// Makes a colour map of what is drawn, where that is new.
#include "reference/hyxOSG/renderers/told_scale.h"

#include <algorithm>

namespace hyxOSG {

hyx::ref_ptr<ScalarColorMap> newColorMap(DrawnScale const& drawn) {
    hyxRender::ColorVector colors;
    for (auto const& color : drawn.colors)
        colors.emplace_back(color.r(), color.g(), color.b(), color.a());
    return new ScalarColorMap(colors, drawn.low, std::max(drawn.low, drawn.high));
}

hyx::ref_ptr<ScalarColorMap> ToldScale::tell(DrawnScale drawn) {
    if (!m_last || drawn.low != m_drawn.low || drawn.high != m_drawn.high || drawn.colors != m_drawn.colors) {
        m_last = newColorMap(drawn);
        m_drawn = std::move(drawn);
    }
    return m_last;
}

} // namespace hyxOSG
