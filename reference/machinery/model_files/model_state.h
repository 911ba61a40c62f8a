// What a model file may bring into a scene.
#pragma once

#include <osg/Node>

namespace hyxOSG {

/// Takes off a loaded model what would change the look of everything else, its lights and light models, and lets its
/// textures keep the size of their images.
void fitIntoScene(osg::Node& model);

} // namespace hyxOSG
