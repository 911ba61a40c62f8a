// Makes models from files fit the shading of the scene.
#include "reference/machinery/model_files/model_state.h"

#include <osg/LightSource>
#include <osg/NodeVisitor>
#include <osg/StateSet>
#include <osg/Texture>

#include <vector>

namespace hyxOSG {
namespace {

class FitIntoScene : public osg::NodeVisitor {
public:
    FitIntoScene() : osg::NodeVisitor(TRAVERSE_ALL_CHILDREN) {}

    void apply(osg::Node& node) override {
        if (osg::StateSet* const state = node.getStateSet())
            fit(*state);
        traverse(node);
    }

    // The node stays, as a group with a name and perhaps children.
    void apply(osg::LightSource& source) override {
        source.setLight(nullptr);
        apply(static_cast<osg::Node&>(source));
    }

private:
    static void fit(osg::StateSet& state) {
        removeLights(state);
        for (unsigned int unit = 0; unit < state.getNumTextureAttributeLists(); ++unit)
            if (auto* const attribute = state.getTextureAttribute(unit, osg::StateAttribute::TEXTURE))
                attribute->asTexture()->setResizeNonPowerOfTwoHint(false);
    }

    static void removeLights(osg::StateSet& state) {
        std::vector<osg::ref_ptr<osg::StateAttribute>> lights;
        for (auto const& [key, entry] : state.getAttributeList())
            if (key.first == osg::StateAttribute::LIGHT || key.first == osg::StateAttribute::LIGHTMODEL)
                lights.push_back(entry.first);
        for (auto const& light : lights)
            state.removeAttribute(light);
        for (GLenum mode = GL_LIGHT0; mode < GL_LIGHT0 + 8; ++mode)
            state.removeMode(mode);
    }
};

} // namespace

void fitIntoScene(osg::Node& model) {
    FitIntoScene visitor;
    model.accept(visitor);
}

} // namespace hyxOSG
