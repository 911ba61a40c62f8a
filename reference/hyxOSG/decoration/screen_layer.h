// A flat layer over the whole view, before or behind the scene.
#pragma once

#include <osg/Camera>

namespace hyxOSG::decorator {

/// A camera in fixed coordinates, unlit and without depth, drawn in the given render bin (below 0: behind the scene).
/// It draws into the picture that the scene is drawn into, also where that is a render target. Its projection is to be
/// set.
osg::ref_ptr<osg::Camera> createScreenLayer(int bin);

} // namespace hyxOSG::decorator
