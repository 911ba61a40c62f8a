// Puts the lights of a model in the places of the scene's own, and back.
#include "reference/hyxtavlang/model_lights.h"

#include "platform/hyxOSG/decoration/scene_decorator.h"
#include "reference/machinery/shading/light_values.h"

#include <osg/Light>
#include <osg/NodeCallback>
#include <osg/NodeVisitor>
#include <osg/UserDataContainer>
#include <osg/ValueObject>
#include <osg/observer_ptr>

#include <algorithm>
#include <array>

namespace hyxtavlang {
namespace {

using hyxOSG::SceneDecorator;

/// Whose lights a decorator has at the moment.
constexpr char const* takenBy = "lights of a model";

osg::Vec4 opaque(hyx::Vec4f const& color) {
    return {color[0], color[1], color[2], 1};
}

bool isBeam(BuiltLight const& built) {
    return !built.given.directional && built.given.spotAngle < osg::PI;
}

void place(osg::Light& light, BuiltLight const& built) {
    hyx::AffineMatrix4x4 const frame = built.body ? built.body->getTransform() : hyx::AffineMatrix4x4();
    hyx::Vec3 const at = frame.transformPoint(built.position), along = frame.transformVector(built.direction);
    light.setPosition(built.given.directional ? osg::Vec4(-along.x, -along.y, -along.z, 0)
                                              : osg::Vec4(at.x, at.y, at.z, 1));
    light.setDirection(osg::Vec3(along.x, along.y, along.z));
}

void dress(osg::Light& light, BuiltLight const& built) {
    constexpr double widest = 90; // degrees of a beam that is one
    auto const& [constant, linear, quadratic] = built.given.attenuation;
    double const cutoff = osg::RadiansToDegrees(built.given.spotAngle);
    light.setDiffuse(opaque(built.given.color));
    light.setSpecular(opaque(built.given.specular));
    light.setSpotCutoff(cutoff <= widest ? static_cast<float>(cutoff) : 180);
    light.setSpotExponent(static_cast<float>(std::clamp(built.given.spotExponent, 0.0, 128.0)));
    light.setConstantAttenuation(static_cast<float>(constant));
    light.setLinearAttenuation(static_cast<float>(linear));
    light.setQuadraticAttenuation(static_cast<float>(quadratic));
    place(light, built);
}

/// Takes over lights of the decorator when the scene is first updated, and lets those on bodies follow them.
class LightRig : public osg::NodeCallback {
public:
    explicit LightRig(std::vector<BuiltLight> const& lights)
        : m_lights(lights.begin(), lights.begin() + static_cast<long>(std::min(lights.size(), mostLights))) {}

    void operator()(osg::Node* node, osg::NodeVisitor* visitor) override {
        for (osg::Node* above : visitor->getNodePath())
            if (auto* const decorator = dynamic_cast<SceneDecorator*>(above))
                take(*decorator);
        if (osg::ref_ptr<SceneDecorator> decorator; m_decorator.lock(decorator))
            for (std::size_t i = 0; i < m_lights.size(); ++i)
                if (m_lights[i].body)
                    place(*lightOf(*decorator, i).getLight(), m_lights[i]);
        traverse(node, visitor);
    }

    void take(SceneDecorator& decorator) {
        bool taken = false;
        if (m_decorator.valid() || decorator.getUserValue(takenBy, taken))
            return;
        decorator.setUserValue(takenBy, true);
        m_decorator = &decorator;
        m_enabled = decorator.getEnabledLights();
        m_shadowing = decorator.getShadowLightSource();
        unsigned enabled = m_enabled;
        for (std::size_t i = 0; i < m_lights.size(); ++i) {
            m_computed[i] = decorator.getEnableCalculateLightPositions(bit(i));
            decorator.setEnableCalculateLightPositions(bit(i), false);
            osg::Light& light = *lightOf(decorator, i).getLight();
            m_former[i] = new osg::Light(light);
            dress(light, m_lights[i]);
            enabled |= bit(i);
        }
        decorator.setEnableLights(static_cast<SceneDecorator::Lights>(enabled));
        // A beam that falls between the corners of a large ground is seen only where each pixel is lit.
        m_litByPixel = !decorator.getEnableShaderState() && std::any_of(m_lights.begin(), m_lights.end(), isBeam);
        if (m_litByPixel)
            decorator.setEnableShaderState(true);
        auto const shadowing = std::find_if(m_lights.begin(), m_lights.end(),
                                            [](BuiltLight const& light) { return light.given.castsShadows; });
        if (shadowing != m_lights.end())
            decorator.setShadowLightSource(bit(static_cast<std::size_t>(shadowing - m_lights.begin())));
    }

protected:
    ~LightRig() override {
        osg::ref_ptr<SceneDecorator> decorator;
        if (!m_decorator.lock(decorator))
            return;
        for (std::size_t i = 0; i < m_lights.size(); ++i) {
            hyxOSG::copyLight(*m_former[i], *lightOf(*decorator, i).getLight());
            decorator->setEnableCalculateLightPositions(bit(i), m_computed[i]);
            if (decorator->getOSGLight(bit(i)) == m_shadowing)
                decorator->setShadowLightSource(bit(i));
        }
        decorator->setEnableLights(m_enabled);
        if (m_litByPixel)
            decorator->setEnableShaderState(false);
        decorator->getUserDataContainer()->removeUserObject(
            decorator->getUserDataContainer()->getUserObjectIndex(takenBy));
    }

private:
    static SceneDecorator::Lights bit(std::size_t index) { return static_cast<SceneDecorator::Lights>(1u << index); }

    static osg::LightSource& lightOf(SceneDecorator& decorator, std::size_t index) {
        return *decorator.getOSGLight(bit(index));
    }

    std::vector<BuiltLight> m_lights;
    osg::observer_ptr<SceneDecorator> m_decorator; ///< null until its lights are taken
    std::array<osg::ref_ptr<osg::Light>, mostLights> m_former;
    std::array<bool, mostLights> m_computed{};
    SceneDecorator::Lights m_enabled = SceneDecorator::ALL;
    osg::LightSource* m_shadowing = nullptr; ///< only compared
    bool m_litByPixel = false;               ///< because of these lights
};

} // namespace

void shine(osg::Group& group, std::vector<BuiltLight> const& lights) {
    if (lights.empty())
        return;
    osg::ref_ptr<LightRig> const rig = new LightRig(lights);
    group.addUpdateCallback(rig);
    for (osg::NodePath const& path : group.getParentalNodePaths())
        for (osg::Node* above : path)
            if (auto* const decorator = dynamic_cast<SceneDecorator*>(above))
                rig->take(*decorator);
}

} // namespace hyxtavlang
