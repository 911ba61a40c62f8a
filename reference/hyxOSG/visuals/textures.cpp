// Reads pictures, and puts them on visuals in their roles.
#include "platform/hyxOSG/visuals/textures.h"

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyxOSG/nodes/geometry_node.h"
#include "platform/hyxOSG/nodes/texture2d.h"
#include "platform/hyxOSG/visuals/finders.h"
#include "reference/hyxOSG/visuals/image_files.h"
#include "reference/machinery/meshes/notices.h"
#include "reference/machinery/shading/node_state.h"
#include "reference/machinery/shading/surface_program.h"

#include <osg/BlendFunc>
#include <osg/TexMat>

#include <cmath>
#include <stdexcept>

namespace hyxOSG {
namespace {

void checkMode(TextureMode mode) {
    if (mode < DIFFUSE_TEXTURE || mode > SPHEREMAP_TEXTURE)
        throw std::invalid_argument("texture mode " + std::to_string(static_cast<int>(mode)) +
                                    " does not exist, use 0 (DIFFUSE_TEXTURE) to 6 (SPHEREMAP_TEXTURE)");
}

bool isScale(float scale) {
    return scale != 0 && std::isfinite(scale);
}

void setScale(osg::StateSet& state, unsigned int unit, float scaleS, float scaleT) {
    if (scaleS == 1 && scaleT == 1)
        state.removeTextureAttribute(unit, osg::StateAttribute::TEXMAT);
    else
        state.setTextureAttributeAndModes(unit, new osg::TexMat(osg::Matrix::scale(scaleS, scaleT, 1)), setByScript);
}

/// Pictures with holes are blended with what lies behind them.
void blendHoles(osg::StateSet& state, osg::Texture2D const& texture) {
    if (!texture.getImage() || !texture.getImage()->isImageTranslucent())
        return;
    state.setAttributeAndModes(new osg::BlendFunc, setByScript);
    state.setRenderingHint(osg::StateSet::TRANSPARENT_BIN);
}

bool apply(osg::Node* node, osg::Texture2D* texture, TextureMode mode, float scaleS, float scaleT) {
    if (!node || !texture || !isScale(scaleS) || !isScale(scaleT))
        return false;
    texture->setResizeNonPowerOfTwoHint(false);
    osg::StateSet& state = writableStateSet(*node);
    if (mode == DIFFUSE_TEXTURE) {
        state.setTextureAttributeAndModes(mode, texture, setByScript);
        blendHoles(state, *texture);
    } else { // read by the program alone, so the fixed pipeline's unit stays off
        state.setTextureAttribute(mode, texture, setByScript);
        useSurfaceProgram(*node);
    }
    if (mode == SPHEREMAP_TEXTURE)
        setReflection(*node, 0.5f, true);
    setScale(state, mode, scaleS, scaleT);
    declareTexture(*node, mode);
    return true;
}

} // namespace

osg::Texture2D* createTexture(std::string const& file) {
    return readTexture(file, false).release();
}

bool setTexture(osg::Node* node, std::string const& file, bool repeat, TextureMode mode, float scaleS, float scaleT) {
    checkMode(mode);
    return node && apply(node, readTexture(file, repeat), mode, scaleS, scaleT);
}

bool setTexture(osg::Node* node, osg::Texture2D* texture, bool repeat, TextureMode mode, float scaleS, float scaleT) {
    checkMode(mode);
    bool const done = apply(node, texture, mode, scaleS, scaleT);
    if (done)
        setRepeat(*texture, repeat);
    return done;
}

bool setTexture(osg::Node* node, Texture2D* texture, bool repeat, TextureMode mode, float scaleS, float scaleT) {
    return setTexture(node, texture ? texture->getTexture() : nullptr, repeat, mode, scaleS, scaleT);
}

bool setTexture(GeometryNode* node, Texture2D* texture, bool repeat, TextureMode mode, float scaleS, float scaleT) {
    return setTexture(static_cast<osg::Node*>(node), texture, repeat, mode, scaleS, scaleT);
}

bool setTexture(hyxCollide::Geometry const* geometry, osg::Group* root, std::string const& file, bool repeat,
                TextureMode mode) {
    checkMode(mode);
    osg::Node* const visual = findGeometryNode(geometry, root);
    if (!visual)
        warn("no visual of the geometry is under that root");
    return setTexture(visual, file, repeat, mode);
}

bool setTexture(hyx::RigidBody const* body, osg::Group* root, std::string const& file, bool repeat, TextureMode mode) {
    checkMode(mode);
    bool done = false;
    if (body)
        for (auto const& geometry : body->getGeometries())
            done |= setTexture(geometry, root, file, repeat, mode);
    return done;
}

} // namespace hyxOSG
