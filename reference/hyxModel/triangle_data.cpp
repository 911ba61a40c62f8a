// Area and force of a piece of pressed surface.
#include "platform/hyxModel/triangle_data.h"

namespace hyxModel {

hyx::Real TriangleData::getArea() const {
    return 0.5 * (vertices[1] - vertices[0]).cross(vertices[2] - vertices[0]).length();
}

hyx::Real TriangleData::getForce() const {
    return getArea() * (pressures[0] + pressures[1] + pressures[2]) / 3;
}

} // namespace hyxModel
