// What a renderer tells of its colours.
#pragma once

#include "platform/hyx/objects/ref_ptr.h"
#include "platform/hyxOSG/renderers/scalar_color_map.h"

#include <osg/Vec4f>

#include <vector>

namespace hyxOSG {

/// Evenly spaced colours from the number `low` to `high`; where `high` is not above it, the first colour.
struct DrawnScale {
    std::vector<osg::Vec4f> colors;
    double low = 0, high = 1;
};

hyx::ref_ptr<ScalarColorMap> newColorMap(DrawnScale const& drawn);

/// Keeps the scale that was told last, and tells the same object until something changes.
class ToldScale {
public:
    hyx::ref_ptr<ScalarColorMap> tell(DrawnScale drawn);

    /// Null before the first.
    hyx::ref_ptr<ScalarColorMap> last() const { return m_last; }

private:
    DrawnScale m_drawn;
    hyx::ref_ptr<ScalarColorMap> m_last;
};

} // namespace hyxOSG
