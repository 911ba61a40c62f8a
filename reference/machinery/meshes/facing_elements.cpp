// Tests each patch of a mesh where it is drawn.
#include "reference/machinery/meshes/facing_elements.h"

#include <osg/CullFace>
#include <osg/FrontFace>
#include <osg/GLExtensions>
#include <osg/State>

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

namespace hyxOSG {
namespace {

constexpr unsigned int fewestTriangles = 2000; // fewer are drawn as quickly as their patches are tested
constexpr unsigned int patchSize = 32;         // triangles; larger ones face both ways more often
// Drivers round corners to parts of pixels, by which faces seen on edge may turn; patches are kept up to a degree away.
constexpr double facingMargin = 0.02;

/// Neighbouring triangles that look nearly the same way.
struct Patch {
    unsigned int first, count; ///< of indices
    osg::Vec3d middle, way;    ///< of the sphere and of the cone that hold places and normals
    double radius;
    double spread; ///< sine of the cone's half angle; 1 for what looks all ways
};

/// From where a drawing looks at a mesh, in the mesh's own coordinates.
struct Sight {
    osg::Vec3d eye; ///< or the way that one looks, where all look the same way
    bool parallel;

    /// Whether every triangle of `patch` shows its back.
    bool seesBackOf(Patch const& patch) const {
        osg::Vec3d const to = parallel ? eye : patch.middle - eye;
        return to * patch.way >= (patch.spread + facingMargin) * to.length() + (parallel ? 0 : patch.radius);
    }
};

/// Nothing where faces that look away are drawn, or where it is not plain which ones these are.
std::optional<Sight> sightOf(osg::State const& state) {
    auto const* const cull =
        dynamic_cast<osg::CullFace const*>(state.getLastAppliedAttribute(osg::StateAttribute::CULLFACE));
    auto const* const front =
        dynamic_cast<osg::FrontFace const*>(state.getLastAppliedAttribute(osg::StateAttribute::FRONTFACE));
    if (!state.getLastAppliedMode(GL_CULL_FACE) || (cull && cull->getMode() != osg::CullFace::BACK) ||
        (front && front->getMode() != osg::FrontFace::COUNTER_CLOCKWISE))
        return {};
    osg::Matrixd const& place = state.getModelViewMatrix();
    osg::Matrixd const& lens = state.getProjectionMatrix();
    osg::Vec3d const x(place(0, 0), place(0, 1), place(0, 2)), y(place(1, 0), place(1, 1), place(1, 2)),
        z(place(2, 0), place(2, 1), place(2, 2));
    bool const mirrored = !((x ^ y) * z * lens(0, 0) * lens(1, 1) > 0);
    bool const turned = lens(0, 1) != 0 || lens(1, 0) != 0 || lens(0, 3) != 0 || lens(1, 3) != 0;
    if (mirrored || turned)
        return {};
    osg::Matrixd const back = osg::Matrixd::inverse(place);
    if (lens(2, 3) < 0 && lens(3, 3) == 0)
        return Sight{back.getTrans(), false};
    if (lens(2, 3) == 0 && lens(3, 3) > 0 && lens(2, 0) == 0 && lens(2, 1) == 0)
        return Sight{osg::Matrixd::transform3x3(osg::Vec3d(0, 0, -1), back), true};
    return {};
}

class FacingElements : public osg::DrawElementsUInt {
public:
    explicit FacingElements(osg::Vec3Array const& positions)
        : osg::DrawElementsUInt(GL_TRIANGLES),
          m_positions(&positions),
          m_positionsRevision(positions.getModifiedCount()) {}

    /// The next indices, which are already there.
    void addPatch(Patch const& patch) { m_patches.push_back(patch); }

    void draw(osg::State& state, bool useBuffers) const override {
        auto const sight = useBuffers && isUnchanged(state) ? sightOf(state) : std::nullopt;
        auto* const buffer = sight ? getOrCreateGLBufferObject(state.getContextID()) : nullptr;
        if (!buffer) {
            osg::DrawElementsUInt::draw(state, useBuffers);
            return;
        }
        drawRuns(state, *buffer, *sight);
    }

private:
    /// Patches that follow each other are sent as one.
    void drawRuns(osg::State& state, osg::GLBufferObject& buffer, Sight const& sight) const {
        std::vector<GLsizei> counts;
        std::vector<GLvoid const*> starts;
        bool follows = false;
        for (Patch const& patch : m_patches) {
            bool const shown = !sight.seesBackOf(patch);
            if (shown && follows) {
                counts.back() += static_cast<GLsizei>(patch.count);
            } else if (shown) {
                std::size_t const place = buffer.getOffset(getBufferIndex()) + patch.first * sizeof(GLuint);
                counts.push_back(static_cast<GLsizei>(patch.count));
                starts.push_back(reinterpret_cast<GLvoid const*>(place));
            }
            follows = shown;
        }
        state.getCurrentVertexArrayState()->bindElementBufferObject(&buffer);
        if (!counts.empty())
            state.get<osg::GLExtensions>()->glMultiDrawElements(GL_TRIANGLES, counts.data(), GL_UNSIGNED_INT,
                                                                starts.data(), static_cast<GLsizei>(counts.size()));
    }

    /// Whether places and triangles are still those that the patches were made of.
    bool isUnchanged(osg::State const& state) const {
        auto const* const drawn = state.getCurrentVertexArrayState()->_vertexArray.get();
        return drawn && drawn->array == m_positions && m_positions->getModifiedCount() == m_positionsRevision &&
               getModifiedCount() == 0 && getNumInstances() == 0;
    }

    osg::ref_ptr<osg::Vec3Array const> m_positions;
    unsigned int m_positionsRevision;
    std::vector<Patch> m_patches;
};

/// Right-angled to the triangle at an index; zero for one without area.
osg::Vec3d normalAt(osg::DrawElementsUInt const& indices, unsigned int at, osg::Vec3Array const& positions) {
    osg::Vec3d const a = positions[indices[at]], b = positions[indices[at + 1]], c = positions[indices[at + 2]];
    osg::Vec3d normal = (b - a) ^ (c - a);
    normal.normalize();
    return normal;
}

Patch patchOf(osg::DrawElementsUInt const& indices, unsigned int first, unsigned int count,
              osg::Vec3Array const& positions) {
    osg::BoundingBoxd box;
    osg::Vec3d way;
    for (unsigned int at = first; at < first + count; ++at)
        box.expandBy(osg::Vec3d(positions[indices[at]]));
    for (unsigned int at = first; at < first + count; at += 3)
        way += normalAt(indices, at, positions);
    way.normalize();
    double radius = 0, leastAlike = 1;
    for (unsigned int at = first; at < first + count; ++at)
        radius = std::max(radius, (osg::Vec3d(positions[indices[at]]) - box.center()).length());
    for (unsigned int at = first; at < first + count; at += 3)
        if (osg::Vec3d const normal = normalAt(indices, at, positions); normal.length2() > 0)
            leastAlike = std::min(leastAlike, way * normal);
    double const spread = leastAlike > 0 ? std::sqrt(std::max(0.0, 1 - leastAlike * leastAlike)) : 1;
    return {first, count, box.center(), way, radius, spread};
}

} // namespace

void drawFacingPatches(osg::Geometry& mesh) {
    auto const* const positions = dynamic_cast<osg::Vec3Array const*>(mesh.getVertexArray());
    if (!positions || mesh.getNumPrimitiveSets() != 1)
        return;
    osg::PrimitiveSet const& elements = *mesh.getPrimitiveSet(0);
    unsigned int const count = elements.getNumIndices() / 3 * 3;
    if (elements.getMode() != GL_TRIANGLES || !elements.getDrawElements() || elements.getNumInstances() != 0 ||
        count < 3 * fewestTriangles)
        return;
    osg::ref_ptr<FacingElements> const facing = new FacingElements(*positions);
    facing->reserve(count);
    for (unsigned int at = 0; at < count; ++at)
        facing->push_back(elements.index(at));
    for (unsigned int first = 0; first < count; first += 3 * patchSize)
        facing->addPatch(patchOf(*facing, first, std::min(3 * patchSize, count - first), *positions));
    mesh.setPrimitiveSet(0, facing);
}

} // namespace hyxOSG
