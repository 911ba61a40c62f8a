// Shadows from depth maps drawn from the light.
#pragma once

#include "reference/hyxOSG/decoration/light_view.h"
#include "reference/machinery/shading/shading_program.h"

#include <osg/LightSource>
#include <osg/observer_ptr>
#include <osgShadow/ShadowTechnique>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>

namespace hyxOSG::decorator {

/// Draws one depth map, or three for growing distances, for each camera that looks at the scene, and the scene with a
/// program that reads them. A map covers what is both behind a caster and visible.
class ShadowMap : public osgShadow::ShadowTechnique {
public:
    struct Settings {
        ShadingOptions shading; ///< with 1 or MAX_SHADOW_MAPS maps
        unsigned int mapSize = 1024;
        unsigned int casterLimit = 0; ///< see SceneDecorator::setShadowCasterLimit
        bool alignWithCamera = false; ///< see LightViewNeeds
    };

    ShadowMap(Settings const& settings, osg::LightSource* light);

    osg::Object* cloneType() const override { return new ShadowMap(m_settings, nullptr); }

    osg::Object* clone(osg::CopyOp const&) const override { return new ShadowMap(m_settings, m_light.get()); }

    char const* className() const override { return "ShadowMap"; }

    void init() override;
    void update(osg::NodeVisitor& visitor) override;
    void cull(osgUtil::CullVisitor& visitor) override;
    void cleanSceneGraph() override;
    void resizeGLObjectBuffers(unsigned int maxSize) override;
    void releaseGLObjects(osg::State* state = nullptr) const override;

protected:
    ~ShadowMap() override;

private:
    struct Map;
    struct Maps;

    Maps& mapsFor(osgUtil::CullVisitor& visitor);
    void forgetUnused(unsigned int frame);
    /// \param casters their stamp: a map of the same ones is not drawn again
    void drawMap(osgUtil::CullVisitor& visitor, Map& map, LightView const& fit, std::optional<std::uint64_t> casters);
    void drawScene(osgUtil::CullVisitor& visitor, osg::StateSet& state);

    Settings m_settings;
    osg::observer_ptr<osg::LightSource> m_light;
    osg::ref_ptr<osg::StateSet> m_shadowed;   ///< the program that reads the maps
    osg::ref_ptr<osg::StateSet> m_unshadowed; ///< for views in which no shadow can be seen
    std::map<osg::Camera const*, std::unique_ptr<Maps>> m_maps;
};

} // namespace hyxOSG::decorator
