// Sets the program up for a decorated scene.
#include "reference/machinery/shading/shading_program.h"

#include "reference/machinery/shading/shadow_lookup.h"
#include "reference/machinery/shading/surface_program.h"

#include <osg/Program>
#include <osg/Uniform>

namespace hyxOSG::decorator {

osg::ref_ptr<osg::StateSet> createShadingState(ShadingOptions const& options) {
    osg::ref_ptr<osg::StateSet> state = new osg::StateSet;
    state->setAttributeAndModes(&surfaceProgram());
    addSurfaceUniforms(*state);
    state->addUniform(new osg::Uniform("hyx_unlit", false));
    state->addUniform(new osg::Uniform("hyx_vertexColors", false));
    state->addUniform(new osg::Uniform("hyx_receivesShadow", true));
    state->setDefine("DIFFUSE_MAP");
    if (!options.highlights)
        state->setDefine("NO_HIGHLIGHTS");
    if (options.skyLight)
        state->setDefine("SKY_LIGHT");
    declareShadowMaps(*state, options);
    return state;
}

} // namespace hyxOSG::decorator
