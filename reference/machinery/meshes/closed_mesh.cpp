// Welds a mesh by its places and counts how often its edges are run through.
#include "reference/machinery/meshes/closed_mesh.h"

#include <osg/CullFace>

#include <algorithm>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

namespace hyxOSG {
namespace {

/// For each vertex the first one at its place.
std::vector<unsigned int> weld(osg::Vec3Array const& positions) {
    std::vector<unsigned int> order(positions.size()), first(positions.size());
    for (unsigned int i = 0; i < order.size(); ++i)
        order[i] = i;
    std::sort(order.begin(), order.end(), [&](unsigned int a, unsigned int b) { return positions[a] < positions[b]; });
    for (std::size_t i = 0; i < order.size(); ++i) {
        bool const same = i > 0 && positions[order[i]] == positions[order[i - 1]];
        first[order[i]] = same ? first[order[i - 1]] : order[i];
    }
    return first;
}

/// Joins what hangs together, and finds its one name.
class Parts {
public:
    explicit Parts(std::size_t vertices) : m_towards(vertices) {
        for (unsigned int i = 0; i < vertices; ++i)
            m_towards[i] = i;
    }

    unsigned int name(unsigned int vertex) {
        while (m_towards[vertex] != vertex)
            vertex = m_towards[vertex] = m_towards[m_towards[vertex]];
        return vertex;
    }

    void join(unsigned int a, unsigned int b) { m_towards[name(a)] = name(b); }

private:
    std::vector<unsigned int> m_towards;
};

/// Of the tetrahedron of the triangle and the origin.
double volumeOf(osg::Vec3Array const& positions, unsigned int const* corners) {
    osg::Vec3d const a = positions[corners[0]], b = positions[corners[1]], c = positions[corners[2]];
    return a * (b ^ c);
}

} // namespace

bool isClosedOutwards(osg::Geometry const& mesh) {
    auto const* const positions = dynamic_cast<osg::Vec3Array const*>(mesh.getVertexArray());
    if (!positions || positions->empty() || mesh.getNumPrimitiveSets() == 0)
        return false;
    std::vector<unsigned int> const first = weld(*positions);
    std::vector<std::uint64_t> there, back; // edges, by the direction in which their ends are numbered
    Parts parts(positions->size());
    std::vector<std::pair<unsigned int, double>> volumes; // of each triangle, with a vertex of its part
    for (auto const& elements : mesh.getPrimitiveSetList()) {
        if (elements->getMode() != GL_TRIANGLES)
            return false;
        unsigned int const count = elements->getNumIndices() / 3 * 3;
        for (unsigned int i = 0; i < count; i += 3) {
            unsigned int const corners[] = {elements->index(i), elements->index(i + 1), elements->index(i + 2)};
            if (std::max({corners[0], corners[1], corners[2]}) >= positions->size())
                return false;
            for (int corner = 0; corner < 3; ++corner) {
                std::uint64_t const from = first[corners[corner]], to = first[corners[(corner + 1) % 3]];
                if (from != to)
                    (from < to ? there : back).push_back(std::min(from, to) << 32 | std::max(from, to));
            }
            parts.join(first[corners[0]], first[corners[1]]);
            parts.join(first[corners[0]], first[corners[2]]);
            volumes.emplace_back(first[corners[0]], volumeOf(*positions, corners));
        }
    }
    std::sort(there.begin(), there.end());
    std::sort(back.begin(), back.end());
    if (there.empty() || there != back)
        return false;
    std::map<unsigned int, double> partVolumes;
    for (auto const& [vertex, volume] : volumes)
        partVolumes[parts.name(vertex)] += volume;
    return std::all_of(partVolumes.begin(), partVolumes.end(), [](auto const& part) { return part.second >= 0; });
}

osg::StateSet* frontFacesOnly() {
    static osg::ref_ptr<osg::StateSet> const state = [] {
        osg::ref_ptr<osg::StateSet> made = new osg::StateSet;
        made->setAttributeAndModes(new osg::CullFace(osg::CullFace::BACK));
        return made;
    }();
    return state;
}

} // namespace hyxOSG
