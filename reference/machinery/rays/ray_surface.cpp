// Finds the triangle that a ray meets first.
#include "reference/machinery/rays/ray_surface.h"

#include "platform/hyxCollide/height_field.h"
#include "platform/hyxCollide/trimesh.h"
#include "reference/machinery/bullet/bullet_values.h"

#include <algorithm>
#include <cmath>

namespace hyx {

namespace {

using hyxCollide::HeightField;
using hyxCollide::Trimesh;

/// T. Moeller and B. Trumbore, Journal of Graphics Tools 2, 1997.
bool meetTriangle(btVector3 const& corner, btVector3 const& first, btVector3 const& second, Ray const& ray,
                  RayMeeting& nearest) {
    btVector3 const across = ray.direction.cross(second);
    double const determinant = first.dot(across);
    if (determinant == 0)
        return false;
    btVector3 const from = ray.origin - corner;
    double const u = from.dot(across) / determinant;
    if (u < 0 || u > 1)
        return false;
    btVector3 const up = from.cross(first);
    double const v = ray.direction.dot(up) / determinant;
    if (v < 0 || u + v > 1)
        return false;
    double const distance = second.dot(up) / determinant;
    if (distance < 0 || distance >= nearest.distance)
        return false;
    nearest.distance = distance;
    nearest.normal = first.cross(second).normalized();
    return true;
}

class MeshSurface : public RaySurface {
public:
    explicit MeshSurface(Trimesh const& mesh) {
        m_triangles.reserve(mesh.getNumTriangles());
        std::vector<RayBox> boxes;
        boxes.reserve(mesh.getNumTriangles());
        for (UInt i = 0; i < mesh.getNumTriangles(); ++i) {
            auto const corner = [&](UInt k) { return toBullet(mesh.getVertices()[mesh.getIndices()[3 * i + k]]); };
            btVector3 const a = corner(0);
            m_triangles.push_back({a, corner(1) - a, corner(2) - a});
            RayBox box{a, a};
            box.include({corner(1), corner(1)});
            box.include({corner(2), corner(2)});
            boxes.push_back(box);
        }
        m_tree.build(boxes);
    }

    bool meet(Ray const& ray, RayMeeting& nearest) const override {
        bool met = false;
        m_tree.walk(ray, nearest.distance, [&](std::uint32_t i) {
            Triangle const& triangle = m_triangles[i];
            if (meetTriangle(triangle.corner, triangle.first, triangle.second, ray, nearest)) {
                nearest.triangle = i;
                met = true;
            }
        });
        return met;
    }

private:
    struct Triangle {
        btVector3 corner, first, second; ///< the last two from the corner on
    };

    std::vector<Triangle> m_triangles;
    BoxTree m_tree;
};

/// The tree holds blocks of cells: a field that changes all the time is soon readied again.
class FieldSurface : public RaySurface {
public:
    explicit FieldSurface(HeightField const& field)
        : m_cellsX(field.getResolutionX() - 1),
          m_cellsY(field.getResolutionY() - 1),
          m_width(field.getSizeX() / static_cast<double>(m_cellsX)),
          m_length(field.getSizeY() / static_cast<double>(m_cellsY)),
          m_left(-field.getSizeX() / 2),
          m_front(-field.getSizeY() / 2),
          m_heights(field.getHeights().begin(), field.getHeights().end()),
          m_blocksX((m_cellsX + blockSize - 1) / blockSize) {
        std::vector<RayBox> boxes;
        for (UInt y = 0; y < m_cellsY; y += blockSize)
            for (UInt x = 0; x < m_cellsX; x += blockSize)
                boxes.push_back(box(x, y, std::min(x + blockSize, m_cellsX), std::min(y + blockSize, m_cellsY)));
        m_tree.build(boxes);
    }

    bool meet(Ray const& ray, RayMeeting& nearest) const override {
        bool met = false;
        m_tree.walk(ray, nearest.distance, [&](std::uint32_t block) {
            UInt const x = block % m_blocksX * blockSize, y = block / m_blocksX * blockSize;
            for (UInt j = y; j < std::min(y + blockSize, m_cellsY); ++j)
                for (UInt i = x; i < std::min(x + blockSize, m_cellsX); ++i)
                    if (std::isfinite(box(i, j, i + 1, j + 1).entry(ray, nearest.distance)))
                        met |= meetCell(i, j, ray, nearest);
        });
        return met;
    }

private:
    static constexpr UInt blockSize = 4;

    double height(UInt i, UInt j) const { return m_heights[j * (m_cellsX + 1) + i]; }

    btVector3 knot(UInt i, UInt j) const {
        return btVector3(m_left + m_width * static_cast<double>(i), m_front + m_length * static_cast<double>(j),
                         height(i, j));
    }

    /// Around the cells from (x0, y0) up to, not including, (x1, y1).
    RayBox box(UInt x0, UInt y0, UInt x1, UInt y1) const {
        RayBox around{knot(x0, y0), knot(x1, y1)};
        double lowest = around.lower.z();
        double highest = lowest;
        for (UInt j = y0; j <= y1; ++j)
            for (UInt i = x0; i <= x1; ++i) {
                lowest = std::min(lowest, height(i, j));
                highest = std::max(highest, height(i, j));
            }
        around.lower.setZ(lowest);
        around.upper.setZ(highest);
        return around;
    }

    /// The two triangles meet along the diagonal from (i + 1, j) to (i, j + 1).
    bool meetCell(UInt i, UInt j, Ray const& ray, RayMeeting& nearest) const {
        btVector3 const right = knot(i + 1, j), back = knot(i, j + 1), low = knot(i, j), high = knot(i + 1, j + 1);
        bool const below = meetTriangle(low, right - low, back - low, ray, nearest);
        bool const above = meetTriangle(high, back - high, right - high, ray, nearest);
        return below || above;
    }

    UInt m_cellsX, m_cellsY;
    double m_width, m_length, m_left, m_front;
    std::vector<double> m_heights;
    UInt m_blocksX;
    BoxTree m_tree;
};

} // namespace

std::unique_ptr<RaySurface> makeRaySurface(hyxCollide::Shape const& shape) {
    if (shape.getType() == hyxCollide::Shape::TRIMESH)
        return std::make_unique<MeshSurface>(static_cast<Trimesh const&>(shape));
    if (shape.getType() == hyxCollide::Shape::HEIGHT_FIELD)
        return std::make_unique<FieldSurface>(static_cast<HeightField const&>(shape));
    return nullptr;
}

} // namespace hyx
