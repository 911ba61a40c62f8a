// Finds or makes the state of a node that may be changed without changing others.
#include "reference/machinery/shading/node_state.h"

#include "reference/machinery/shading/material_colors.h"

#include <osg/BlendFunc>
#include <osg/Depth>
#include <osg/Multisample>
#include <osg/NodeVisitor>

namespace hyxOSG {
namespace {

osg::Material* materialOf(osg::StateSet* state) {
    return state ? static_cast<osg::Material*>(state->getAttribute(osg::StateAttribute::MATERIAL)) : nullptr;
}

class FirstMaterial : public osg::NodeVisitor {
public:
    FirstMaterial() : osg::NodeVisitor(TRAVERSE_ALL_CHILDREN) {}

    void apply(osg::Node& node) override {
        if (!found)
            found = materialOf(node.getStateSet());
        isGround = isGround || (node.getStateSet() && node.getStateSet()->getDefinePair("FADES"));
        if (!found)
            traverse(node);
    }

    osg::Material* found = nullptr;
    bool isGround = false; // as far as it has looked
};

} // namespace

osg::StateSet& writableStateSet(osg::Node& node) {
    osg::StateSet* const state = node.getOrCreateStateSet();
    if (state->getNumParents() > 1)
        node.setStateSet(new osg::StateSet(*state, osg::CopyOp::SHALLOW_COPY));
    return *node.getStateSet();
}

void setGroundTone(osg::StateSet& state, float tone, osg::StateAttribute::GLModeValue mode) {
    state.addUniform(new osg::Uniform("hyx_groundTone", tone), mode);
}

osg::Material& writableMaterial(osg::Node& node) {
    FirstMaterial first;
    node.accept(first);
    osg::StateSet& state = writableStateSet(node);
    osg::ref_ptr<osg::Material> material = materialOf(&state);
    if (!material || material->getNumParents() > 1)
        material = copyOf(first.found ? *first.found : defaultMaterial());
    if (first.isGround)
        setGroundTone(state, 1); // of the colour that it is given
    material->setColorMode(osg::Material::OFF);
    state.setAttributeAndModes(material, setByScript);
    return *material;
}

void setOpacity(osg::StateSet& state, float alpha) {
    if (alpha < 1) {
        state.setAttributeAndModes(new osg::BlendFunc, setByScript);
        state.setAttributeAndModes(new osg::Depth(osg::Depth::LESS, 0, 1, false), setByScript);
        state.setRenderingHint(osg::StateSet::TRANSPARENT_BIN);
    } else {
        state.removeAttribute(osg::StateAttribute::BLENDFUNC);
        state.removeAttribute(osg::StateAttribute::DEPTH);
        state.setRenderingHint(osg::StateSet::DEFAULT_BIN);
        state.setRenderBinToInherit();
    }
}

void drawWithoutSamples(osg::StateSet& state) {
    state.setMode(GL_MULTISAMPLE_ARB, osg::StateAttribute::OFF);
}

} // namespace hyxOSG
