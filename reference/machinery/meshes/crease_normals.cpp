// Collects triangles and corners, sums the normals around each place, and splits vertices that need several.
#include "reference/machinery/meshes/crease_normals.h"

#include <osg/TriangleIndexFunctor>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <numeric>
#include <span>
#include <vector>

namespace hyxOSG {
namespace {

/// The faces at a place are compared pairwise up to this number; more, as in a fan of needles, are all joined.
constexpr std::size_t mostCompared = 500;

struct Triangle {
    std::array<unsigned int, 3> vertices;
    std::array<float, 3> angles; ///< radians, at the corners
    osg::Vec3 normal;
};

struct Corner {
    unsigned int triangle;
    unsigned int number; ///< in the triangle
};

class CollectTriangles {
public:
    void operator()(unsigned int a, unsigned int b, unsigned int c) {
        osg::Vec3 const corners[] = {(*positions)[a], (*positions)[b], (*positions)[c]};
        Triangle triangle{{a, b, c}, {}, (corners[1] - corners[0]) ^ (corners[2] - corners[0])};
        if (!(triangle.normal.normalize() > 0))
            return;
        for (std::size_t i = 0; i < 3; ++i) {
            osg::Vec3 const along = corners[(i + 1) % 3] - corners[i], back = corners[(i + 2) % 3] - corners[i];
            triangle.angles[i] = std::atan2((along ^ back).length(), along * back);
        }
        triangles.push_back(triangle);
    }

    osg::Vec3Array const* positions = nullptr;
    std::vector<Triangle> triangles;
};

bool isSurface(osg::PrimitiveSet const& elements) {
    return elements.getMode() >= GL_TRIANGLES && elements.getMode() <= GL_POLYGON;
}

/// Lines and points stay as they are.
std::vector<Triangle> takeTriangles(osg::Geometry& mesh, osg::Vec3Array const& positions) {
    osg::TriangleIndexFunctor<CollectTriangles> collector;
    collector.positions = &positions;
    for (unsigned int i = mesh.getNumPrimitiveSets(); i-- > 0;)
        if (isSurface(*mesh.getPrimitiveSet(i))) {
            mesh.getPrimitiveSet(i)->accept(collector);
            mesh.removePrimitiveSet(i);
        }
    return std::move(collector.triangles);
}

/// A number for each place, the same for all vertices there: these may be several for the sake of their texture.
std::vector<unsigned int> placeNumbers(osg::Vec3Array const& positions, unsigned int& count) {
    constexpr unsigned int none = ~0u;
    std::size_t const size = std::bit_ceil(2 * positions.size() + 1);
    std::vector<unsigned int> first(size, none), numbers(positions.size()); // the first vertex at each place
    count = 0;
    for (unsigned int vertex = 0; vertex < positions.size(); ++vertex) {
        osg::Vec3 const& place = positions[vertex];
        std::size_t slot = place.isNaN() ? vertex : 0; // no number equals itself there
        for (int i = 0; i < 3; ++i)                    // both zeros are one place
            slot = (slot ^ std::bit_cast<std::uint32_t>(place[i] + 0.0f)) * 0x9E3779B97F4A7C15u;
        slot ^= slot >> 32;
        while (first[slot & (size - 1)] != none && positions[first[slot & (size - 1)]] != place)
            ++slot;
        unsigned int& known = first[slot & (size - 1)];
        numbers[vertex] = known == none ? count++ : numbers[known];
        if (known == none)
            known = vertex;
    }
    return numbers;
}

/// Those at one place follow each other; `starts` has the first of each place, and the end.
std::vector<Corner> cornersByPlace(std::vector<Triangle> const& triangles, osg::Vec3Array const& positions,
                                   std::vector<unsigned int>& starts) {
    unsigned int places = 0;
    std::vector<unsigned int> const numbers = placeNumbers(positions, places);
    starts.assign(places + 1, 0);
    for (Triangle const& triangle : triangles)
        for (unsigned int const vertex : triangle.vertices)
            ++starts[numbers[vertex] + 1];
    std::partial_sum(starts.begin(), starts.end(), starts.begin());
    std::vector<unsigned int> next(starts.begin(), starts.end() - 1);
    std::vector<Corner> corners(3 * triangles.size());
    for (unsigned int i = 0; i < triangles.size(); ++i)
        for (unsigned int number = 0; number < 3; ++number)
            corners[next[numbers[triangles[i].vertices[number]]]++] = {i, number};
    return corners;
}

osg::Vec3 normalAt(Corner const& corner, std::span<Corner const> around, std::vector<Triangle> const& triangles,
                   float leastCosine) {
    osg::Vec3 const& own = triangles[corner.triangle].normal;
    osg::Vec3 sum;
    for (Corner const& other : around)
        if (float const cosine = own * triangles[other.triangle].normal; cosine >= leastCosine)
            sum += triangles[other.triangle].normal * triangles[other.triangle].angles[other.number];
    return sum.normalize() > 0 ? sum : own;
}

/// The vertices of the mesh with their normals, doubled where they need more than one.
class Splitter {
public:
    explicit Splitter(std::size_t vertices) : m_normals(vertices), m_twin(vertices, none), m_taken(vertices, false) {
        for (unsigned int i = 0; i < vertices; ++i)
            m_sources.push_back(i);
    }

    /// The vertex that has the place and the looks of `vertex`, and this normal.
    unsigned int find(unsigned int vertex, osg::Vec3 const& normal) {
        constexpr float same = 0.99999f;
        for (;; vertex = m_twin[vertex]) {
            if (!m_taken[vertex])
                break;
            if (m_normals[vertex] * normal > same)
                return vertex;
            if (m_twin[vertex] == none) {
                m_twin[vertex] = static_cast<unsigned int>(m_sources.size());
                m_sources.push_back(m_sources[vertex]);
                m_normals.emplace_back();
                m_twin.push_back(none);
                m_taken.push_back(false);
            }
        }
        m_normals[vertex] = normal;
        m_taken[vertex] = true;
        return vertex;
    }

    std::vector<osg::Vec3> const& normals() const { return m_normals; }

    /// Gives all arrays with a value for each vertex one for the doubled ones.
    void extend(osg::Geometry& mesh, std::size_t vertices) const {
        osg::Geometry::ArrayList arrays;
        mesh.getArrayList(arrays);
        for (auto const& array : arrays)
            if (array == mesh.getVertexArray() ||
                (array->getBinding() == osg::Array::BIND_PER_VERTEX && array->getNumElements() >= vertices)) {
                array->resizeArray(static_cast<unsigned int>(m_sources.size()));
                auto* const bytes = static_cast<char*>(const_cast<GLvoid*>(array->getDataPointer()));
                std::size_t const size = array->getElementSize();
                for (std::size_t i = vertices; i < m_sources.size(); ++i)
                    std::memcpy(bytes + i * size, bytes + m_sources[i] * size, size);
                array->dirty();
            }
    }

private:
    static constexpr unsigned int none = ~0u;
    std::vector<osg::Vec3> m_normals;
    std::vector<unsigned int> m_twin; ///< the next that was made of the same vertex
    std::vector<bool> m_taken;
    std::vector<unsigned int> m_sources; ///< the vertex that each was made of
};

} // namespace

void setCreaseNormals(osg::Geometry& mesh, double creaseAngle) {
    auto const& positions = static_cast<osg::Vec3Array const&>(*mesh.getVertexArray());
    std::size_t const vertices = positions.size();
    std::vector<Triangle> const triangles = takeTriangles(mesh, positions);
    std::vector<unsigned int> starts;
    std::vector<Corner> const corners = cornersByPlace(triangles, positions, starts);
    float const sharp = static_cast<float>(std::cos(creaseAngle)) - 1e-5f;
    Splitter splitter(vertices);
    osg::ref_ptr<osg::DrawElementsUInt> const elements = new osg::DrawElementsUInt(GL_TRIANGLES, 3 * triangles.size());
    for (std::size_t place = 0; place + 1 < starts.size(); ++place) {
        std::span const around(corners.begin() + starts[place], corners.begin() + starts[place + 1]);
        if (around.empty())
            continue;
        bool const compared = around.size() <= mostCompared;
        osg::Vec3 const joined = compared ? osg::Vec3() : normalAt(around.front(), around, triangles, -2);
        for (Corner const& corner : around) {
            osg::Vec3 const normal = compared ? normalAt(corner, around, triangles, sharp) : joined;
            unsigned int const vertex = triangles[corner.triangle].vertices[corner.number];
            (*elements)[3 * corner.triangle + corner.number] = splitter.find(vertex, normal);
        }
    }
    mesh.setNormalArray(nullptr);
    splitter.extend(mesh, vertices);
    mesh.setNormalArray(new osg::Vec3Array(splitter.normals().begin(), splitter.normals().end()),
                        osg::Array::BIND_PER_VERTEX);
    mesh.addPrimitiveSet(elements);
}

} // namespace hyxOSG
