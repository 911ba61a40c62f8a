// Checks elements, arrays, images and transforms of scenes from elsewhere.
#include "reference/machinery/meshes/mesh_check.h"

#include <osg/Image>
#include <osg/NodeVisitor>
#include <osg/StateSet>
#include <osg/Texture>
#include <osg/Transform>

#include <algorithm>
#include <cmath>
#include <unordered_set>

namespace hyxOSG {
namespace {

constexpr unsigned int mostLevels = 900; // leaves room for the groups that the scene is put under
constexpr int mostPixels = 32768;

/// One more than the highest vertex that the elements name; too large a number for elements that name none.
std::size_t verticesNamed(osg::PrimitiveSet const& elements) {
    if (auto const* const range = dynamic_cast<osg::DrawArrays const*>(&elements))
        return range->getFirst() < 0 || range->getCount() < 0 ? SIZE_MAX
                                                              : std::size_t(range->getFirst()) + range->getCount();
    if (auto const* const lengths = dynamic_cast<osg::DrawArrayLengths const*>(&elements)) {
        std::size_t last = std::max(lengths->getFirst(), 0);
        for (GLint const length : *lengths) {
            if (length < 0)
                return SIZE_MAX;
            last += length;
        }
        return lengths->getFirst() < 0 ? SIZE_MAX : last;
    }
    std::size_t most = 0;
    for (unsigned int i = 0; i < elements.getNumIndices(); ++i)
        most = std::max<std::size_t>(most, std::size_t(elements.index(i)) + 1);
    return most;
}

/// The library's walk over the indices of triangles reads on to the third corner of the last.
bool hasWholeTriangles(osg::PrimitiveSet const& elements) {
    return elements.getMode() != GL_TRIANGLES || !elements.getDrawElements() || elements.getNumIndices() % 3 == 0;
}

template <class Number>
bool areFinite(osg::Array const& array) {
    auto const* const numbers = static_cast<Number const*>(array.getDataPointer());
    return std::all_of(numbers, numbers + array.getTotalDataSize() / sizeof(Number),
                       [](Number value) { return std::isfinite(value); });
}

bool isFinite(osg::Array const& array) {
    if (array.getNumElements() == 0)
        return true;
    if (array.getDataType() == GL_FLOAT)
        return areFinite<float>(array);
    return array.getDataType() != GL_DOUBLE || areFinite<double>(array);
}

bool isFinite(osg::Matrixd const& matrix) {
    return std::all_of(matrix.ptr(), matrix.ptr() + 16, [](double value) { return std::isfinite(value); });
}

bool isWhole(osg::Image const& image) {
    bool const sized = image.s() >= 0 && image.t() >= 0 && image.r() >= 0 && image.s() <= mostPixels &&
                       image.t() <= mostPixels && image.r() <= mostPixels;
    bool const empty = image.s() == 0 || image.t() == 0 || image.r() == 0;
    return sized && (empty || image.data());
}

class FindFault : public osg::NodeVisitor {
public:
    FindFault() : osg::NodeVisitor(TRAVERSE_ALL_CHILDREN) {}

    void apply(osg::Node& node) override {
        if (!fault.empty() || !m_seen.insert(&node).second)
            return;
        if (getNodePath().size() > mostLevels)
            fault = "is more than " + std::to_string(mostLevels) + " groups deep";
        else if (osg::StateSet const* const state = node.getStateSet())
            check(*state);
        if (fault.empty())
            traverse(node);
    }

    void apply(osg::Transform& transform) override {
        osg::Matrixd matrix;
        transform.computeLocalToWorldMatrix(matrix, this);
        if (!isFinite(matrix))
            fault = "has a transform that is not a number";
        apply(static_cast<osg::Node&>(transform));
    }

    void apply(osg::Geometry& mesh) override {
        if (fault.empty())
            fault = meshFault(mesh);
        apply(static_cast<osg::Node&>(mesh));
    }

    std::string fault;

private:
    void check(osg::StateSet const& state) {
        for (unsigned int unit = 0; unit < state.getNumTextureAttributeLists(); ++unit) {
            auto const* const attribute = state.getTextureAttribute(unit, osg::StateAttribute::TEXTURE);
            auto const* const texture = attribute ? attribute->asTexture() : nullptr;
            for (unsigned int face = 0; texture && face < texture->getNumImages(); ++face)
                if (osg::Image const* const image = texture->getImage(face); image && !isWhole(*image))
                    fault = "has a texture without its pixels";
        }
    }

    std::unordered_set<osg::Node const*> m_seen;
};

} // namespace

std::string meshFault(osg::Geometry const& mesh) {
    std::size_t const vertices = mesh.getVertexArray() ? mesh.getVertexArray()->getNumElements() : 0;
    for (auto const& elements : mesh.getPrimitiveSetList()) {
        if (elements && verticesNamed(*elements) > vertices)
            return "has elements that name vertices it has not";
        if (elements && !hasWholeTriangles(*elements))
            return "has a triangle without its third corner";
    }
    osg::Geometry::ArrayList arrays;
    mesh.getArrayList(arrays);
    for (auto const& array : arrays) {
        if (array->getBinding() == osg::Array::BIND_PER_VERTEX && array->getNumElements() < vertices)
            return "has fewer normals, colours or texture coordinates than vertices";
        if (!isFinite(*array))
            return "has values that are not numbers";
    }
    return "";
}

std::string sceneFault(osg::Node& scene) {
    FindFault visitor;
    scene.accept(visitor);
    return visitor.fault;
}

} // namespace hyxOSG
