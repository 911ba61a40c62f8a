// Marks parts of scenes as lit, receiving and casting.
#include "reference/machinery/shading/shading_marks.h"

#include <osg/Drawable>
#include <osg/Material>
#include <osg/NodeVisitor>
#include <osg/StateSet>
#include <osg/Uniform>

namespace hyxOSG::decorator {
namespace {

char const* const unlitName = "hyx_unlit";
char const* const vertexColorsName = "hyx_vertexColors";
char const* const receivesName = "hyx_receivesShadow";

void setMark(osg::StateSet& state, char const* name, bool value, osg::StateAttribute::OverrideValue flags) {
    osg::Uniform* mark = state.getUniform(name);
    if (!mark)
        state.addUniform(mark = new osg::Uniform(name, value), flags | osg::StateAttribute::ON);
    bool present = value;
    mark->get(present);
    if (present != value)
        mark->set(value);
}

void removeMark(osg::StateSet& state, char const* name) {
    if (osg::Uniform* mark = state.getUniform(name))
        state.removeUniform(mark);
}

class Marker : public osg::NodeVisitor {
public:
    explicit Marker(bool castersReceive)
        : osg::NodeVisitor(osg::NodeVisitor::TRAVERSE_ALL_CHILDREN), m_castersReceive(castersReceive) {}

    void apply(osg::Node& node) override {
        Inherited const above = m_inherited;
        m_inherited.mask &= node.getNodeMask();
        m_inherited.receives = (m_inherited.mask & ExampleApplication::RECIEVES_SHADOWS_MASK) &&
                               (m_castersReceive || !(m_inherited.mask & ExampleApplication::CASTS_SHADOWS_MASK));
        if (m_inherited.receives != above.receives)
            setMark(*node.getOrCreateStateSet(), receivesName, m_inherited.receives, osg::StateAttribute::ON);
        else if (osg::StateSet* state = node.getStateSet())
            removeMark(*state, receivesName);
        if (osg::StateSet* state = node.getStateSet()) {
            markUnlit(*state);
            markVertexColors(*state);
        }
        traverse(node);
        m_inherited = above;
    }

private:
    /// What holds for everything below the present node. A node has a bit only when all above have it.
    struct Inherited {
        osg::Node::NodeMask mask = ~0u;
        bool receives = true; ///< as the program's own uniform
    };

    static void markUnlit(osg::StateSet& state) {
        osg::StateSet::ModeList const& modes = state.getModeList();
        auto const lighting = modes.find(GL_LIGHTING);
        if (lighting == modes.end())
            removeMark(state, unlitName);
        else
            setMark(state, unlitName, !(lighting->second & osg::StateAttribute::ON), lighting->second);
    }

    static void markVertexColors(osg::StateSet& state) {
        auto const* const entry = state.getAttributePair(osg::StateAttribute::MATERIAL);
        if (!entry) {
            removeMark(state, vertexColorsName);
            return;
        }
        auto const mode = static_cast<osg::Material const&>(*entry->first).getColorMode();
        bool const decide = mode == osg::Material::DIFFUSE || mode == osg::Material::AMBIENT_AND_DIFFUSE;
        setMark(state, vertexColorsName, decide, entry->second);
    }

    bool m_castersReceive;
    Inherited m_inherited;
};

} // namespace

void markShading(osg::Node& node, bool castersReceive) {
    Marker marker(castersReceive);
    node.accept(marker);
}

} // namespace hyxOSG::decorator
