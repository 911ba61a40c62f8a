// Draws what one sees through in the right order at each pixel, also where it crosses.
#include "reference/machinery/shading/peeled_layers.h"
#include "reference/machinery/shading/surface_program.h"

#include <osg/BoundingBox>
#include <osg/ColorMask>
#include <osg/ContextData>
#include <osg/Depth>
#include <osg/Geometry>
#include <osgUtil/RenderBin>
#include <osgUtil/RenderLeaf>
#include <osgUtil/RenderStage>

#include <algorithm>
#include <vector>

namespace hyxOSG {
namespace {

using osgUtil::RenderLeaf;
using osgUtil::StateGraph;
using Leaves = osgUtil::RenderBin::RenderLeafList;

constexpr unsigned int mostLayers = 32;
constexpr unsigned int manyVertices = 20000; // of one mesh, whose own layers are too dear then

std::vector<osg::StateSet const*> statesAbove(RenderLeaf const& leaf) {
    std::vector<osg::StateSet const*> states;
    for (StateGraph const* graph = leaf._parent; graph; graph = graph->_parent)
        if (graph->getStateSet())
            states.push_back(graph->getStateSet());
    std::reverse(states.begin(), states.end());
    return states;
}

bool isOn(std::vector<osg::StateSet const*> const& states, osg::StateAttribute::GLMode mode) {
    unsigned int value = osg::StateAttribute::OFF;
    for (osg::StateSet const* state : states)
        if (auto const found = state->getModeList().find(mode); found != state->getModeList().end())
            if (!(value & osg::StateAttribute::OVERRIDE) || (found->second & osg::StateAttribute::PROTECTED))
                value = found->second;
    return value & osg::StateAttribute::ON;
}

/// Whether vertices lie where the fixed functions put them, and fragments as deep as their faces.
bool hasPlainDepth(std::vector<osg::StateSet const*> const& states) {
    return std::all_of(states.begin(), states.end(), [](osg::StateSet const* state) {
        auto const* const program = state->getAttribute(osg::StateAttribute::PROGRAM);
        return !program || program == &surfaceProgram();
    });
}

/// What a leaf covers: of the picture, from -1 to 1 each way, and of the depth.
struct Extent {
    osg::BoundingBoxd box;
    bool severalLayers = false;

    bool mixesWith(Extent const& other) const { return box.intersects(other.box); }
};

osg::BoundingBoxd screenBox(RenderLeaf const& leaf) {
    osg::BoundingBoxd box;
    osg::BoundingBox const& bounds = leaf.getDrawable()->getBoundingBox();
    for (unsigned int i = 0; i < 8; ++i) {
        osg::Vec3d const eye = osg::Vec3d(bounds.corner(i)) * *leaf._modelview;
        osg::Vec4d const clip = osg::Vec4d(eye, 1) * *leaf._projection;
        if (clip.w() <= 0) // beside or behind the eye: anywhere in the picture
            box.expandBy(osg::BoundingBoxd(-1, -1, eye.z(), 1, 1, eye.z()));
        else
            box.expandBy(osg::Vec3d(clip.x() / clip.w(), clip.y() / clip.w(), eye.z()));
    }
    return box;
}

bool hasSeveralLayers(RenderLeaf const& leaf, std::vector<osg::StateSet const*> const& states) {
    osg::Geometry const* const mesh = leaf.getDrawable()->asGeometry();
    osg::BoundingBox const& bounds = mesh->getBoundingBox();
    osg::Vec3 const size = bounds._max - bounds._min;
    bool const flat = std::min({size.x(), size.y(), size.z()}) <= 1e-4f * size.length();
    return !flat && !isOn(states, GL_CULL_FACE) && mesh->getVertexArray() &&
           mesh->getVertexArray()->getNumElements() <= manyVertices;
}

/// The leaves whose layers are told apart, and the others, in two lists as they were drawn.
struct Sorted {
    Leaves layered, farther, nearer;
    bool needed = false; ///< whether the order of whole leaves would be wrong somewhere
};

Sorted sortOut(Leaves const& leaves) {
    Sorted sorted;
    std::vector<Extent> extents;
    for (RenderLeaf* leaf : leaves) {
        auto const states = statesAbove(*leaf);
        if (!leaf->getDrawable()->asGeometry() || !isOn(states, GL_BLEND) || !hasPlainDepth(states)) {
            (sorted.layered.empty() ? sorted.farther : sorted.nearer).push_back(leaf);
            continue;
        }
        Extent const extent{screenBox(*leaf), hasSeveralLayers(*leaf, states)};
        sorted.needed =
            sorted.needed || extent.severalLayers ||
            std::any_of(extents.begin(), extents.end(), [&](Extent const& other) { return other.mixesWith(extent); });
        extents.push_back(extent);
        sorted.layered.push_back(leaf);
    }
    return sorted;
}

/// Takes the place of the bin that sorts by the distances of centres.
class TransparentBin : public osgUtil::RenderBin {
public:
    TransparentBin() : RenderBin(SORT_BACK_TO_FRONT) {}

    TransparentBin(TransparentBin const& other, osg::CopyOp const& how) : RenderBin(other, how) {}

    osg::Object* cloneType() const override { return new TransparentBin; }

    osg::Object* clone(osg::CopyOp const& how) const override { return new TransparentBin(*this, how); }

    void drawImplementation(osg::RenderInfo& info, RenderLeaf*& previous) override {
        Sorted const sorted = sortOut(_renderLeafList);
        osg::Viewport const* const viewport = _stage ? _stage->getViewport() : nullptr;
        bool const simple = _bins.empty() && _stateGraphList.empty();
        if (!sorted.needed || !simple || !viewport || !drawLayered(sorted, *viewport, info, previous))
            RenderBin::drawImplementation(info, previous);
    }

private:
    static void render(Leaves const& leaves, osg::RenderInfo& info, RenderLeaf*& previous) {
        for (RenderLeaf* leaf : leaves) {
            leaf->render(info, previous);
            previous = leaf;
        }
    }

    static void applyState(RenderLeaf& leaf, osg::State& state, RenderLeaf*& previous) {
        state.applyModelViewMatrix(leaf._modelview.get());
        state.applyProjectionMatrix(leaf._projection.get());
        StateGraph::moveStateGraph(state, previous ? previous->_parent->_parent : nullptr, leaf._parent->_parent);
        state.apply(leaf._parent->getStateSet());
        previous = &leaf;
    }

    bool drawLayered(Sorted const& sorted, osg::Viewport const& viewport, osg::RenderInfo& info,
                     RenderLeaf*& previous) {
        osg::State& state = *info.getState();
        auto& layers = *osg::get<PeeledLayers>(state.getContextID());
        if (!layers.begin(state, viewport))
            return false;
        unsigned int const position = placeOfBin(state, previous);
        state.insertStateSet(position, _stateset);
        render(sorted.farther, info, previous);
        for (unsigned int layer = 0; layer < mostLayers; ++layer) {
            layers.beginDepths(state);
            drawDepths(sorted.layered, layers, info, previous);
            if (!layers.endDepths())
                break;
            drawColors(sorted.layered, info, previous);
        }
        layers.end(state);
        for (RenderLeaf* leaf : sorted.layered)
            if (leaf->_dynamic)
                state.decrementDynamicObjectCount();
        render(sorted.nearer, info, previous);
        state.removeStateSet(position);
        return true;
    }

    /// Where the bin's own state goes among those that are applied.
    static unsigned int placeOfBin(osg::State& state, RenderLeaf const* previous) {
        auto const toPop = previous ? StateGraph::numToPop(previous->_parent) : 0;
        return state.getStateSetStackSize() - static_cast<unsigned int>(std::max(toPop - 1, toPop > 0 ? 1 : 0));
    }

    void drawDepths(Leaves const& leaves, PeeledLayers const& layers, osg::RenderInfo& info, RenderLeaf*& previous) {
        osg::State& state = *info.getState();
        for (RenderLeaf* leaf : leaves) {
            applyState(*leaf, state, previous);
            state.applyAttribute(m_farthest);
            state.applyAttribute(m_noColors);
            state.applyMode(GL_BLEND, false);
            layers.applyProgram(state);
            leaf->_drawable->draw(info);
        }
    }

    void drawColors(Leaves const& leaves, osg::RenderInfo& info, RenderLeaf*& previous) {
        osg::State& state = *info.getState();
        for (RenderLeaf* leaf : leaves) {
            applyState(*leaf, state, previous);
            state.applyAttribute(m_equal);
            leaf->_drawable->draw(info);
        }
    }

    osg::ref_ptr<osg::Depth> m_farthest = new osg::Depth(osg::Depth::GREATER);
    osg::ref_ptr<osg::Depth> m_equal = new osg::Depth(osg::Depth::EQUAL, 0, 1, false);
    osg::ref_ptr<osg::ColorMask> m_noColors = new osg::ColorMask(false, false, false, false);
};

[[maybe_unused]] bool const inUse = [] {
    osgUtil::RenderBin::addRenderBinPrototype("DepthSortedBin", new TransparentBin);
    return true;
}();

} // namespace
} // namespace hyxOSG
