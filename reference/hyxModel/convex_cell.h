// Solids that Voronoi cells are cut from.
#pragma once

#include "platform/hyxModel/fracture_generator.h"

#include <vector>

namespace hyxModel {

/// A convex solid that is cut down by planes.
class ConvexCell {
public:
    /// A box with these half sides about the origin.
    explicit ConvexCell(hyx::Vec3 const& halfExtents);

    /// Keeps what lies where `normal` . x <= `offset`.
    void cut(hyx::Vec3 const& normal, hyx::Real offset);

    bool isEmpty() const { return m_faces.size() < 4; }

    /// The cell with its volume, and its corners relative to the centroid.
    FractureCell getCell() const;

private:
    using Face = std::vector<hyx::Vec3>;

    std::vector<Face> m_faces;
};

} // namespace hyxModel
