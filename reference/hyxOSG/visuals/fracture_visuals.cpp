// Gives pieces a look as soon as they break off.
#include "platform/hyxOSG/visuals/fracture_visuals.h"

#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyxModel/fracture_generator.h"
#include "platform/hyxOSG/visuals/create_visual.h"
#include "platform/hyxOSG/visuals/finders.h"
#include "platform/hyxOSG/visuals/materials.h"

#include <osg/Group>
#include <osg/observer_ptr>

#include <functional>

namespace hyxOSG {
namespace {

bool hasVisual(hyx::RigidBody const& body, osg::Group* root) {
    for (auto const& geometry : body.getGeometries())
        if (findGeometryNode(geometry, root))
            return true;
    return false;
}

/// Gives each piece a visual, unless an updater under `root` already did, and then hands it to `finish`.
void drawPieces(hyxModel::FractureGenerator* generator, osg::Group* root,
                std::function<void(hyx::RigidBody*, osg::Group*)> finish) {
    if (!generator || !root)
        return;
    generator->addFragmentCallback(
        [scene = osg::observer_ptr<osg::Group>(root), finish](hyx::RigidBody*, hyx::RigidBody* piece) {
            osg::ref_ptr<osg::Group> alive;
            if (!scene.lock(alive))
                return;
            if (!hasVisual(*piece, alive))
                createVisual(piece, alive);
            finish(piece, alive);
        });
}

} // namespace

void addRenderCallbackToFracture(hyxModel::FractureGenerator* generator, osg::Group* root) {
    drawPieces(generator, root, [](hyx::RigidBody*, osg::Group*) {});
}

void addRenderColorCallbackToFracture(hyxModel::FractureGenerator* generator, osg::Group* root,
                                      hyx::Vec4f const& color) {
    drawPieces(generator, root,
               [color](hyx::RigidBody* piece, osg::Group* scene) { setDiffuseColor(piece, color, scene); });
}

} // namespace hyxOSG
