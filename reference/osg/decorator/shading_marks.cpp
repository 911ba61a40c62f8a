#include "reference/osg/decorator/shading_marks.h"

#include <osg/Drawable>
#include <osg/NodeVisitor>
#include <osg/StateSet>
#include <osg/Uniform>

namespace hyxOSG::decorator {
namespace {

char const * const litName = "hyx_lit";
char const * const receivesName = "hyx_receivesShadow";

void setMark(osg::StateSet & state, char const * name, bool value, osg::StateAttribute::OverrideValue flags) {
    osg::Uniform * mark = state.getUniform(name);
    if (!mark)
        state.addUniform(mark = new osg::Uniform(name, value), flags);
    bool present = value;
    mark->get(present);
    if (present != value)
        mark->set(value);
}

void removeMark(osg::StateSet & state, char const * name) {
    if (osg::Uniform * mark = state.getUniform(name))
        state.removeUniform(mark);
}

class Marker : public osg::NodeVisitor {
public:
    Marker() : osg::NodeVisitor(osg::NodeVisitor::TRAVERSE_ALL_CHILDREN) {}

    void apply(osg::Node & node) override {
        markReceiving(node);
        if (osg::StateSet * state = node.getStateSet())
            markLit(*state);
        traverse(node);
    }

private:
    static void markReceiving(osg::Node & node) {
        if (!(node.getNodeMask() & RECEIVES_SHADOWS))
            setMark(*node.getOrCreateStateSet(), receivesName, false, osg::StateAttribute::OVERRIDE | osg::StateAttribute::ON);
        else if (osg::StateSet * state = node.getStateSet())
            removeMark(*state, receivesName);
    }

    static void markLit(osg::StateSet & state) {
        osg::StateSet::ModeList const & modes = state.getModeList();
        auto const lighting = modes.find(GL_LIGHTING);
        if (lighting == modes.end())
            removeMark(state, litName);
        else
            setMark(state, litName, lighting->second & osg::StateAttribute::ON, lighting->second);
    }
};

} // namespace

void markShading(osg::Node & node) {
    Marker marker;
    node.accept(marker);
}

} // namespace hyxOSG::decorator
