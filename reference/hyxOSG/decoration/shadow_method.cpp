// Chooses the technique for each way to throw shadows.
#include "reference/hyxOSG/decoration/shadow_method.h"

#include "reference/hyxOSG/decoration/shadow_map.h"
#include "reference/hyxOSG/decoration/shadow_volume.h"

#include <stdexcept>
#include <string>

namespace hyxOSG::decorator {
namespace {

ShadowMap::Settings mapSettings(SceneDecorator::ShadowMethod method, ShadingOptions const& shading,
                                ShadowMapCost cost) {
    ShadowMap::Settings settings{shading, cost.size, cost.casterLimit,
                                 method == SceneDecorator::LIGHTSPACEPERSPECTIVE_SHADOWMAP};
    settings.shading.shadowMaps = method == SceneDecorator::PARALLELLSPLIT_SHADOWMAP ? MAX_SHADOW_MAPS : 1;
    settings.shading.blackShadows = method == SceneDecorator::SHADOWTEXTURE;
    settings.shading.softShadows = method != SceneDecorator::SHADOWMAP && method != SceneDecorator::SHADOWTEXTURE;
    return settings;
}

} // namespace

void requireShadowMethod(SceneDecorator::ShadowMethod method) {
    if (method < SceneDecorator::SOFT_SHADOWMAP || method > SceneDecorator::NO_SHADOWS)
        throw std::invalid_argument("no shadow method has the value " + std::to_string(static_cast<int>(method)) +
                                    "; use one of 0 to 6");
}

osg::ref_ptr<osgShadow::ShadowTechnique> createShadowTechnique(SceneDecorator::ShadowMethod method,
                                                               ShadingOptions shading, ShadowMapCost cost,
                                                               osg::LightSource* light) {
    switch (method) {
    case SceneDecorator::NO_SHADOWS:
        return nullptr;
    case SceneDecorator::SHADOWVOLUME:
        return new ShadowVolume(light);
    default:
        return new ShadowMap(mapSettings(method, shading, cost), light);
    }
}

} // namespace hyxOSG::decorator
