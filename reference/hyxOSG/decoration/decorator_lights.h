// The decorator's three lights.
#pragma once

#include <osg/BoundingSphere>
#include <osg/Group>
#include <osg/LightSource>
#include <osg/StateSet>

#include <array>

namespace hyxOSG::decorator {

/// Owns the lights' nodes and knows which are on, which are placed by computation and which one throws the shadows.
class DecoratorLights {
public:
    static constexpr int count = 3;

    DecoratorLights();

    /// The node that holds the lights.
    osg::Group* node() { return m_group; }

    osg::LightSource* light(int index) { return m_sources[index]; }

    void setEnabled(unsigned int mask) { m_enabled = mask & 7u; }

    unsigned int enabled() const { return m_enabled; }

    /// Writes the modes of all lights, and the uniforms that tell programs of them, into the state that the lit scene
    /// inherits.
    void applyModes(osg::StateSet& state) const;

    /// Tells programs whether any light is a spot; cheap enough for every frame.
    void declareSpots(osg::StateSet& state) const;

    void setComputed(unsigned int mask, bool computed);

    bool isComputed(int index) const { return m_computed & (1u << index); }

    void setShadowLight(int index) { m_shadowLight = index; }

    int shadowLight() const { return m_shadowLight; }

    /// Places the computed lights around a sphere; an invalid one changes nothing.
    void place(osg::BoundingSphere const& around);

private:
    osg::ref_ptr<osg::Group> m_group;
    std::array<osg::ref_ptr<osg::LightSource>, count> m_sources;
    unsigned int m_enabled = 1;
    unsigned int m_computed = 7;
    int m_shadowLight = 0;
};

} // namespace hyxOSG::decorator
