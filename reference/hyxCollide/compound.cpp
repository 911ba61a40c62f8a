// Volume and bounds of shapes put together.
#include "platform/hyxCollide/compound.h"

#include "reference/hyx/values/number_checks.h"
#include "reference/machinery/bullet/shape_implementation.h"

#include <algorithm>
#include <stdexcept>

namespace hyxCollide {

Compound::~Compound() {
    for (Part const& part : m_parts)
        std::erase(part.shape->implementation().containers, this);
}

void Compound::add(Shape* shape, hyx::AffineMatrix4x4 const& local) {
    if (!shape)
        throw std::invalid_argument("a compound needs a shape to add");
    Type const type = shape->getType();
    if (type == COMPOUND || type == PLANE || type == HEIGHT_FIELD)
        throw std::invalid_argument("a compound cannot hold compounds, planes and height fields");
    m_parts.push_back({shape, hyx::requireFinite(local, "the place of a part")});
    shape->implementation().containers.push_back(this);
    changed();
}

hyx::Real Compound::getVolume() const {
    hyx::Real volume = 0;
    for (Part const& part : m_parts)
        volume += part.shape->getVolume();
    return volume;
}

void Compound::getBound(hyx::Vec3& lower, hyx::Vec3& upper) const {
    lower = upper = hyx::Vec3();
    bool first = true;
    for (Part const& part : m_parts) {
        hyx::Vec3 partLower;
        hyx::Vec3 partUpper;
        part.shape->getBound(partLower, partUpper);
        for (int corner = 0; corner < 8; ++corner) {
            hyx::Vec3 const point = part.local.transformPoint(hyx::Vec3(corner & 1 ? partUpper.x : partLower.x,
                                                                        corner & 2 ? partUpper.y : partLower.y,
                                                                        corner & 4 ? partUpper.z : partLower.z));
            for (int i = 0; i < 3; ++i) {
                lower[i] = first ? point[i] : std::min(lower[i], point[i]);
                upper[i] = first ? point[i] : std::max(upper[i], point[i]);
            }
            first = false;
        }
    }
}

} // namespace hyxCollide
