// Joins the lines in which a plane cuts triangles to outlines, and fills these.
#include "reference/machinery/meshes/plane_section.h"

#include <osgUtil/Tessellator>

#include <algorithm>
#include <cstdint>
#include <map>
#include <unordered_map>
#include <utility>
#include <vector>

namespace hyxOSG {
namespace {

/// Numbers that vertices at one place share.
class Places {
public:
    explicit Places(osg::Vec3Array const& positions) {
        std::map<osg::Vec3, unsigned int> numbers;
        m_numbers.reserve(positions.size());
        for (osg::Vec3 const& position : positions)
            m_numbers.push_back(numbers.emplace(position, static_cast<unsigned int>(numbers.size())).first->second);
    }

    unsigned int operator[](unsigned int vertex) const { return m_numbers[vertex]; }

private:
    std::vector<unsigned int> m_numbers;
};

using Edge = std::uint64_t; ///< of a mesh, by the places of its ends

/// The cut edges, each with the one that follows it around the body.
class Outlines {
public:
    Outlines(osg::Vec3Array const& positions, osg::Plane const& plane) : m_positions(positions) {
        m_heights.reserve(positions.size());
        for (osg::Vec3 const& position : positions)
            m_heights.push_back(plane.distance(osg::Vec3d(position)));
    }

    /// Triangles of vertices that there are not are left out.
    void add(unsigned int const (&corners)[3]) {
        if (std::max({corners[0], corners[1], corners[2]}) >= m_heights.size())
            return;
        Edge from = 0, to = 0;
        int crossings = 0;
        for (int i = 0; i < 3; ++i) {
            unsigned int const a = corners[i], b = corners[(i + 1) % 3];
            if (kept(a) == kept(b))
                continue;
            ++crossings;
            (kept(a) ? from : to) = crossing(a, b);
        }
        if (crossings == 2)
            m_next.emplace(from, to);
    }

    /// Takes one closed line out; empty when there are no more.
    std::vector<osg::Vec3> take() {
        std::vector<osg::Vec3> line;
        if (m_next.empty())
            return line;
        Edge const start = m_next.begin()->first;
        Edge edge = start;
        do {
            auto const found = m_next.find(edge);
            if (found == m_next.end())
                break; // the mesh has a hole
            line.push_back(m_points.at(edge));
            edge = found->second;
            m_next.erase(found);
        } while (edge != start);
        return line;
    }

    void setPlaces(Places const& places) { m_places = &places; }

    bool crosses() const {
        bool above = false, below = false;
        for (double const height : m_heights)
            (height >= 0 ? above : below) = true;
        return above && below;
    }

private:
    bool kept(unsigned int vertex) const { return m_heights[vertex] >= 0; }

    Edge crossing(unsigned int a, unsigned int b) {
        if ((*m_places)[a] > (*m_places)[b])
            std::swap(a, b); // one point, whichever triangle asks
        Edge const edge = Edge((*m_places)[a]) << 32 | (*m_places)[b];
        double const part = m_heights[a] / (m_heights[a] - m_heights[b]);
        m_points.emplace(edge, m_positions[a] + (m_positions[b] - m_positions[a]) * static_cast<float>(part));
        return edge;
    }

    osg::Vec3Array const& m_positions;
    std::vector<double> m_heights; ///< over the plane
    Places const* m_places = nullptr;
    std::unordered_multimap<Edge, Edge> m_next;
    std::unordered_map<Edge, osg::Vec3> m_points;
};

osg::ref_ptr<osg::Geometry> filled(Outlines& outlines, osg::Vec3 const& normal) {
    osg::ref_ptr<osg::Geometry> const face = new osg::Geometry;
    osg::ref_ptr<osg::Vec3Array> const corners = new osg::Vec3Array;
    face->setVertexArray(corners);
    for (auto line = outlines.take(); !line.empty(); line = outlines.take()) {
        if (line.size() < 3)
            continue;
        face->addPrimitiveSet(
            new osg::DrawArrays(GL_POLYGON, static_cast<int>(corners->size()), static_cast<int>(line.size())));
        corners->insert(corners->end(), line.begin(), line.end());
    }
    if (corners->empty())
        return nullptr;
    osg::ref_ptr<osgUtil::Tessellator> const tessellator = new osgUtil::Tessellator;
    tessellator->setTessellationType(osgUtil::Tessellator::TESS_TYPE_GEOMETRY);
    tessellator->setWindingType(osgUtil::Tessellator::TESS_WINDING_NONZERO);
    tessellator->setTessellationNormal(normal);
    tessellator->retessellatePolygons(*face);
    osg::ref_ptr<osg::Vec3Array> const normals = new osg::Vec3Array(1);
    normals->front() = normal;
    face->setNormalArray(normals, osg::Array::BIND_OVERALL);
    face->setUseDisplayList(false);
    face->setUseVertexBufferObjects(true);
    return face;
}

} // namespace

osg::ref_ptr<osg::Geometry> sectionOf(osg::Geometry const& mesh, osg::Plane const& plane) {
    auto const* const positions = dynamic_cast<osg::Vec3Array const*>(mesh.getVertexArray());
    if (!positions)
        return nullptr;
    Outlines outlines(*positions, plane);
    if (!outlines.crosses())
        return nullptr;
    Places const places(*positions);
    outlines.setPlaces(places);
    for (auto const& elements : mesh.getPrimitiveSetList())
        for (unsigned int i = 0; i + 2 < elements->getNumIndices(); i += 3)
            outlines.add({elements->index(i), elements->index(i + 1), elements->index(i + 2)});
    osg::Vec3 normal = -osg::Vec3(plane.getNormal());
    normal.normalize();
    return filled(outlines, normal);
}

} // namespace hyxOSG
