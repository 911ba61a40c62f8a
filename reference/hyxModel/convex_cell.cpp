// Cuts a convex solid by a plane: corners, faces and volume of what is left.
#include "reference/hyxModel/convex_cell.h"

#include <algorithm>
#include <cmath>

namespace hyxModel {

using hyx::Real;
using hyx::Vec3;

namespace {

constexpr Real touching = 1e-10; ///< metres within which a corner lies on a plane, and corners are one

Vec3 anyAcross(Vec3 const& direction) {
    Vec3 const axis = std::abs(direction.x) < 0.7 ? Vec3(1, 0, 0) : Vec3(0, 1, 0);
    return direction.cross(axis).normal();
}

} // namespace

ConvexCell::ConvexCell(Vec3 const& half) {
    for (int axis = 0; axis < 3; ++axis)
        for (int side = -1; side <= 1; side += 2) {
            Vec3 centre, u, v;
            centre[axis] = side * half[axis];
            int const first = (axis + (side > 0 ? 1 : 2)) % 3, other = (axis + (side > 0 ? 2 : 1)) % 3;
            u[first] = half[first];
            v[other] = half[other];
            m_faces.push_back({centre - u - v, centre + u - v, centre + u + v, centre - u + v});
        }
}

void ConvexCell::cut(Vec3 const& normal, Real offset) {
    std::vector<Face> kept;
    std::vector<Vec3> rim;
    bool removed = false;
    for (Face const& face : m_faces) {
        Face part;
        for (std::size_t i = 0; i < face.size(); ++i) {
            Vec3 const& a = face[i];
            Vec3 const& b = face[(i + 1) % face.size()];
            Real const heightA = normal.dot(a) - offset, heightB = normal.dot(b) - offset;
            if (heightA <= touching)
                part.push_back(a);
            else
                removed = true;
            if (std::abs(heightA) <= touching)
                rim.push_back(a);
            if ((heightA > touching && heightB < -touching) || (heightA < -touching && heightB > touching)) {
                part.push_back(a + (b - a) * (heightA / (heightA - heightB)));
                rim.push_back(part.back());
            }
        }
        if (part.size() >= 3)
            kept.push_back(std::move(part));
    }
    if (!removed)
        return;
    m_faces = std::move(kept);
    // The cut is closed by a face through all corners that lie on the plane, in the order of their angles.
    Vec3 middle;
    for (Vec3 const& corner : rim)
        middle += corner / static_cast<Real>(rim.size());
    Vec3 const u = anyAcross(normal), v = normal.cross(u);
    auto const angle = [&](Vec3 const& corner) { return std::atan2(v.dot(corner - middle), u.dot(corner - middle)); };
    std::sort(rim.begin(), rim.end(), [&](Vec3 const& a, Vec3 const& b) { return angle(a) < angle(b); });
    Face cap;
    for (Vec3 const& corner : rim)
        if (cap.empty() || ((corner - cap.back()).length() > touching && (corner - cap.front()).length() > touching))
            cap.push_back(corner);
    if (cap.size() >= 3)
        m_faces.push_back(std::move(cap));
}

FractureCell ConvexCell::getCell() const {
    FractureCell cell;
    if (isEmpty())
        return cell;
    Vec3 const origin = m_faces[0][0];
    for (Face const& face : m_faces)
        for (std::size_t i = 1; i + 1 < face.size(); ++i) {
            Real const volume = (face[0] - origin).dot((face[i] - origin).cross(face[i + 1] - origin)) / 6;
            cell.volume += volume;
            cell.centroid += (face[0] + face[i] + face[i + 1] + origin) * (0.25 * volume);
        }
    if (!(cell.volume > 0))
        return FractureCell();
    cell.centroid /= cell.volume;
    for (Face const& face : m_faces) {
        std::vector<hyx::UInt>& corners = cell.faces.emplace_back();
        for (Vec3 const& corner : face) {
            Vec3 const place = corner - cell.centroid;
            auto const known = std::find_if(cell.vertices.begin(), cell.vertices.end(),
                                            [&](Vec3 const& other) { return (other - place).length2() < 1e-16; });
            corners.push_back(known - cell.vertices.begin());
            if (known == cell.vertices.end())
                cell.vertices.push_back(place);
        }
    }
    return cell;
}

} // namespace hyxModel
