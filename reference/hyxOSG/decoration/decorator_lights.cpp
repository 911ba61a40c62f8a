// Where the standard lights stand, and which of them are on.
#include "reference/hyxOSG/decoration/decorator_lights.h"

#include <algorithm>
#include <string>

namespace hyxOSG::decorator {
namespace {

struct LightSetup {
    osg::Vec3 direction; ///< from the middle of the scene, X to the right, Y away from the viewer, Z up
    float brightness;
};

// A key light from above the viewer's left shoulder, a fill light from the right and a rim light from behind.
std::array<LightSetup, DecoratorLights::count> const setups = {{
    {{-0.45f, -0.6f, 1.0f}, 0.75f},
    {{0.9f, -0.5f, 0.6f}, 0.25f},
    {{0.2f, 1.0f, 0.7f}, 0.2f},
}};

// Shadows of a light this far away hardly spread.
constexpr float distanceInRadii = 3.0f;

osg::ref_ptr<osg::LightSource> createLight(int index) {
    LightSetup const& setup = setups[index];
    osg::ref_ptr<osg::LightSource> source = new osg::LightSource;
    source->setName("SceneDecorator light " + std::to_string(index));
    osg::Light* light = source->getLight();
    light->setLightNum(index);
    // Ambient light belongs to the light model: a shadow technique may clear that of its light.
    light->setAmbient(osg::Vec4(0, 0, 0, 1));
    light->setDiffuse(osg::Vec4(setup.brightness, setup.brightness, setup.brightness, 1));
    light->setSpecular(osg::Vec4(setup.brightness, setup.brightness, setup.brightness, 1));
    light->setPosition(osg::Vec4(setup.direction, 0));
    return source;
}

} // namespace

DecoratorLights::DecoratorLights() : m_group(new osg::Group) {
    m_group->setName("SceneDecorator lights");
    for (int i = 0; i < count; ++i) {
        m_sources[i] = createLight(i);
        m_group->addChild(m_sources[i]);
    }
}

void DecoratorLights::applyModes(osg::StateSet& state) const {
    for (int i = 0; i < count; ++i) {
        bool const on = m_enabled & (1u << i);
        state.setMode(GL_LIGHT0 + i, on ? osg::StateAttribute::ON : osg::StateAttribute::OFF);
        // Programs cannot read modes. A node may switch a light on for itself.
        std::string const off = "LIGHT" + std::to_string(i) + "_OFF";
        if (on)
            state.removeDefine(off);
        else
            state.setDefine(off);
        state.getOrCreateUniform("hyx_lightOff" + std::to_string(i), osg::Uniform::BOOL)->set(!on);
    }
}

void DecoratorLights::declareSpots(osg::StateSet& state) const {
    bool const spots = std::any_of(m_sources.begin(), m_sources.end(), [](auto const& source) {
        return source->getLight() && source->getLight()->getSpotCutoff() < 180;
    });
    bool const declared = state.getDefinePair("NO_SPOTS") == nullptr;
    if (spots && !declared)
        state.removeDefine("NO_SPOTS");
    else if (!spots && declared)
        state.setDefine("NO_SPOTS");
}

void DecoratorLights::setComputed(unsigned int mask, bool computed) {
    m_computed = computed ? m_computed | mask : m_computed & ~mask;
}

void DecoratorLights::place(osg::BoundingSphere const& around) {
    if (!around.valid())
        return;
    float const distance = distanceInRadii * std::max(around.radius(), 1e-3f);
    for (int i = 0; i < count; ++i) {
        if (!isComputed(i))
            continue;
        osg::Vec3 direction = setups[i].direction;
        direction.normalize();
        m_sources[i]->getLight()->setPosition(osg::Vec4(around.center() + direction * distance, 1));
        m_sources[i]->getLight()->setDirection(-direction);
        m_sources[i]->dirtyBound();
    }
}

} // namespace hyxOSG::decorator
