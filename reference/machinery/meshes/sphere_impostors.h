// Many spheres in one draw call.
#pragma once

#include "platform/hyxOSG/nodes/particle_system_drawable.h"

#include <osg/BoundingBox>
#include <osg/Geometry>
#include <osg/Quat>
#include <osg/StateSet>

namespace hyxOSG {

/// The places and colours of spheres, in buffers, and the state and program that draw them as points or quads that look
/// like balls, or as small meshes. The impostors are lit and have the depth of a ball's surface, so that they cut
/// rightly through each other and everything else.
class SphereImpostors {
public:
    using RenderingMode = ParticleSystemDrawable::ParticleRenderingMode;
    using ShaderMode = ParticleSystemDrawable::ParticleShaderMode;

    SphereImpostors();

    /// The state to draw with; put it on the drawable once, setShaderMode changes it in place.
    osg::StateSet* state() const { return m_state; }

    void setShaderMode(ShaderMode mode);

    /// Takes all spheres anew: begin, any number of add, end.
    void begin(std::size_t expected);
    void add(osg::Vec3 const& center, float radius, osg::Vec4 const& color, osg::Quat const& rotation);
    void end();

    std::size_t size() const { return m_places->size(); }

    osg::BoundingBox const& bounds() const { return m_bounds; }

    /// Draws into the current context. Quads that are small in the picture are drawn as points, which looks the same
    /// and is cheaper; points that are too large for the graphics driver as quads. Meshes that are small have fewer
    /// triangles.
    void draw(osg::RenderInfo& renderInfo, RenderingMode mode) const;
    void releaseGLObjects(osg::State* state) const;

private:
    osg::ref_ptr<osg::Geometry> instanced(osg::Geometry* form) const;
    /// Infinite where the nearest may touch the camera.
    float largestInPixels(osg::State const& state, float viewportHeight) const;

    osg::ref_ptr<osg::Vec4Array> m_places = new osg::Vec4Array; ///< centre and radius
    osg::ref_ptr<osg::Vec4ubArray> m_colors = new osg::Vec4ubArray;
    osg::ref_ptr<osg::Vec4Array> m_rotations = new osg::Vec4Array;
    osg::BoundingBox m_bounds;
    float m_largest = 0; ///< radius
    osg::ref_ptr<osg::StateSet> m_state = new osg::StateSet;
    osg::ref_ptr<osg::Geometry> m_points, m_quads, m_meshes, m_coarseMeshes;
};

} // namespace hyxOSG
