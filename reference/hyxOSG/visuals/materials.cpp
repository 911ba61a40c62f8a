// Changes the materials of visuals, each visual its own.
#include "platform/hyxOSG/visuals/materials.h"

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyxOSG/nodes/geometry_node.h"
#include "platform/hyxOSG/visuals/finders.h"
#include "reference/machinery/meshes/conversions.h"
#include "reference/machinery/meshes/notices.h"
#include "reference/machinery/shading/material_colors.h"
#include "reference/machinery/shading/node_state.h"

#include <osg/NodeVisitor>

#include <algorithm>
#include <cmath>
#include <functional>
#include <sstream>
#include <stdexcept>

namespace hyxOSG {
namespace {

using Change = std::function<void(osg::StateSet&, osg::Material&)>;

/// Makes a change on every node below `top` that has a material of its own.
class ChangeMaterials : public osg::NodeVisitor {
public:
    ChangeMaterials(osg::Node& top, Change const& change)
        : osg::NodeVisitor(TRAVERSE_ALL_CHILDREN), m_top(top), m_change(change) {}

    void apply(osg::Node& node) override {
        osg::StateSet const* const state = node.getStateSet();
        if (&node != &m_top && state && state->getAttribute(osg::StateAttribute::MATERIAL)) {
            osg::Material& material = writableMaterial(node);
            m_change(*node.getStateSet(), material);
        }
        traverse(node);
    }

private:
    osg::Node& m_top;
    Change const& m_change;
};

void changeMaterial(osg::Node* node, bool recursive, Change const& change) {
    if (!node)
        return warn("there is no node whose material to change");
    osg::Material& material = writableMaterial(*node);
    change(*node->getStateSet(), material);
    if (recursive) {
        ChangeMaterials visitor(*node, change);
        node->accept(visitor);
    }
}

/// Of a colour, an opacity or a sharpness.
float checkedPart(float value, float highest) {
    if (std::isnan(value))
        throw std::invalid_argument("a colour or material value must be a number, not NaN");
    float const taken = std::clamp(value, 0.0f, highest), rounding = highest / 1000;
    if (std::abs(value - taken) > rounding) {
        std::ostringstream notice;
        notice << (highest == 1 ? "the parts of a colour, and opacity, are numbers from 0 to 1; "
                                : "shininess is a number from 0 (wide) to 128 (narrow); ")
               << value << " is taken for " << taken;
        warn(notice.str());
    }
    return taken;
}

osg::Vec4f checkedColor(hyx::Vec4f const& color) {
    return {checkedPart(color.x, 1), checkedPart(color.y, 1), checkedPart(color.z, 1), checkedPart(color.w, 1)};
}

} // namespace

void setDiffuseColor(osg::Node* node, hyx::Vec4f const& color, bool recursive) {
    changeMaterial(node, recursive, [value = checkedColor(color)](osg::StateSet& state, osg::Material& material) {
        setDiffuse(material, value);
        setOpacity(state, value.a());
    });
}

void setDiffuseColor(hyx::RigidBody* body, hyx::Vec4f const& color, osg::Group* root) {
    if (!body)
        return warn("there is no body to colour");
    bool found = false;
    for (auto const& geometry : body->getGeometries())
        if (GeometryNode* const visual = findGeometryNode(geometry, root)) {
            setDiffuseColor(visual, color);
            found = true;
        }
    if (!found)
        warn("no visual of \"" + std::string(body->getName()) + "\" is under that root");
}

void setDiffuseColor(hyxCollide::Geometry* geometry, hyx::Vec4f const& color, osg::Group* root) {
    if (GeometryNode* const visual = findGeometryNode(geometry, root))
        setDiffuseColor(visual, color);
    else
        warn("no visual of the geometry is under that root");
}

void setAmbientColor(osg::Node* node, hyx::Vec4f const& color, bool recursive) {
    changeMaterial(node, recursive, [value = checkedColor(color)](osg::StateSet&, osg::Material& material) {
        setAmbient(material, value);
    });
}

void setSpecularColor(osg::Node* node, hyx::Vec4f const& color, bool recursive) {
    changeMaterial(node, recursive, [value = checkedColor(color)](osg::StateSet&, osg::Material& material) {
        material.setSpecular(bothFaces, value);
    });
}

void setShininess(osg::Node* node, float shininess, bool recursive) {
    changeMaterial(node, recursive, [value = checkedPart(shininess, 128)](osg::StateSet&, osg::Material& material) {
        material.setShininess(bothFaces, value);
    });
}

void setAlpha(osg::Node* node, float alpha, bool recursive) {
    changeMaterial(node, recursive, [value = checkedPart(alpha, 1)](osg::StateSet& state, osg::Material& material) {
        material.setAlpha(bothFaces, value);
        setOpacity(state, value);
    });
}

void setEnableLight(bool enable, int light, osg::Node* node) {
    if (light < 0 || light > 7)
        throw std::invalid_argument("light number " + std::to_string(light) + " does not exist, use 0 to 7");
    if (!node)
        return;
    auto const value = enable ? setByScript : setByScript & ~osg::StateAttribute::ON;
    osg::StateSet& state = writableStateSet(*node);
    state.setMode(GL_LIGHT0 + static_cast<GLenum>(light), value);
    // Programs cannot read modes.
    std::string const off = "LIGHT" + std::to_string(light) + "_OFF";
    state.setDefine(off, enable ? osg::StateAttribute::OFF : osg::StateAttribute::ON);
    state.addUniform(new osg::Uniform(("hyx_lightOff" + std::to_string(light)).c_str(), !enable), setByScript);
}

} // namespace hyxOSG
