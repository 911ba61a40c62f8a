// Makes cameras that draw in pixels over the picture.
#include "reference/hyxOSG/decoration/screen_layer.h"

#include <osg/Depth>

namespace hyxOSG::decorator {

osg::ref_ptr<osg::Camera> createScreenLayer(int bin) {
    osg::ref_ptr<osg::Camera> camera = new osg::Camera;
    camera->setReferenceFrame(osg::Camera::ABSOLUTE_RF);
    camera->setRenderOrder(osg::Camera::NESTED_RENDER);
    camera->setViewMatrix(osg::Matrix::identity());
    camera->setClearMask(0);
    camera->setAllowEventFocus(false);
    camera->setComputeNearFarMode(osg::Camera::DO_NOT_COMPUTE_NEAR_FAR);
    camera->setCullingMode(osg::CullSettings::NO_CULLING);
    osg::StateSet* state = camera->getOrCreateStateSet();
    state->setRenderBinDetails(bin, "RenderBin");
    state->setMode(GL_LIGHTING, osg::StateAttribute::OFF);
    state->setAttributeAndModes(new osg::Depth(osg::Depth::ALWAYS, 0, 1, false));
    return camera;
}

} // namespace hyxOSG::decorator
