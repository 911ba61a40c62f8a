// Shadows from stencil volumes: exact to the pixel, for closed meshes.
#pragma once

#include <osg/Geometry>
#include <osg/LightSource>
#include <osg/observer_ptr>
#include <osgShadow/ShadowTechnique>

#include <map>

namespace hyxOSG::decorator {

/// Counts in the stencil buffer how many volumes end in front of each surface (depth-fail, so that the camera may stand
/// in a shadow) and then darkens what is inside one. Needs a stencil buffer that is cleared with each picture. Node
/// masks choose the casters; all surfaces receive. Lower stencil bits count, the highest one marks surfaces that are
/// left out, see leaveOutState.
class ShadowVolume : public osgShadow::ShadowTechnique {
public:
    explicit ShadowVolume(osg::LightSource* light);

    osg::Object* cloneType() const override { return new ShadowVolume(nullptr); }

    osg::Object* clone(osg::CopyOp const&) const override { return new ShadowVolume(m_light.get()); }

    char const* className() const override { return "ShadowVolume"; }

    void init() override;
    void update(osg::NodeVisitor& visitor) override;
    void cull(osgUtil::CullVisitor& visitor) override;
    void cleanSceneGraph() override;
    void resizeGLObjectBuffers(unsigned int maxSize) override;
    void releaseGLObjects(osg::State* state = nullptr) const override;

    /// The state of surfaces that no shadow falls on.
    static osg::ref_ptr<osg::StateSet> leaveOutState();

protected:
    ~ShadowVolume() override;

private:
    class Casters;

    struct Mesh {
        osg::observer_ptr<osg::Drawable> source;
        unsigned int revision = 0;
        osg::ref_ptr<osg::Geometry> mesh;
    };

    osg::Geometry* meshOf(osg::Drawable& drawable);
    void forgetUnused();

    osg::observer_ptr<osg::LightSource> m_light;
    osg::ref_ptr<osg::StateSet> m_counting;
    osg::ref_ptr<osg::Geometry> m_starting; ///< clears what the scene itself left in the counting bits
    osg::ref_ptr<osg::Geometry> m_leavingOut;
    osg::ref_ptr<osg::Geometry> m_darkening;
    std::map<osg::Drawable const*, Mesh> m_meshes;
};

} // namespace hyxOSG::decorator
