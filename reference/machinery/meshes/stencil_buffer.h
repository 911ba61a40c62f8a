// Where outlines and shadow volumes can be drawn.
#pragma once

#include <osg/Camera>

namespace hyxOSG {

/// Whether a camera draws into something that has a stencil buffer; of a window it is taken for granted. A shadow map's
/// camera has none, nor has one without a buffer for it.
inline bool hasStencil(osg::Camera const& camera) {
    auto const& attached = camera.getBufferAttachmentMap();
    return camera.getRenderTargetImplementation() == osg::Camera::FRAME_BUFFER ||
           attached.contains(osg::Camera::STENCIL_BUFFER) ||
           attached.contains(osg::Camera::PACKED_DEPTH_STENCIL_BUFFER);
}

} // namespace hyxOSG
