// Gathers points from scans or from outside, and shows them for their time.
#include "platform/hyxOSG/renderers/lidar_output_renderer.h"

#include "platform/hyxOSG/renderers/lidar_output_renderer_color_function_callback.h"
#include "platform/hyxSDK/simulation.h"
#include "platform/hyxSensor/lidar.h"
#include "reference/hyx/values/number_checks.h"
#include "reference/hyxOSG/renderers/lidar_colors.h"
#include "reference/hyxOSG/renderers/lidar_point_cloud.h"
#include "reference/hyxOSG/renderers/told_scale.h"
#include "reference/machinery/shading/node_state.h"
#include "reference/machinery/shading/shading_marks.h"

#include <osg/BlendFunc>
#include <osg/Depth>
#include <osg/NodeVisitor>
#include <osg/Point>
#include <osg/Program>

#include <cmath>
#include <stdexcept>

namespace hyxOSG {
namespace {

constexpr float pixelsAtScaleOne = 3.0f;
constexpr int onTopBin = 1000;
constexpr int scaleSamples = 1025; // more than a bar has pixels

} // namespace

struct LidarOutputRenderer::Implementation {
    hyx::ref_ptr<hyxSensor::Lidar const> lidar;
    LidarPointCloud cloud;
    IntensityState::ColorFunc color = presetFunction(IntensityState::RAINBOW);
    std::pair<float, float> colored{0, 1}; // scaled intensities between which colours change
    ToldScale scale;
    bool scaleTold = false; // since the last change
    osg::ref_ptr<osg::Point> point = new osg::Point(pixelsAtScaleOne);
    float pointScale = 1;
    float intensityScale = 1;
    float lifetime = 0;
    bool onTop = false;
    bool recolorAll = false;
    hyx::UInt revision = 0; // of the hits that were taken last
    double time = 0;

    void setUpState(osg::StateSet& state);
    void setColor(IntensityState::ColorFunc next, std::pair<float, float> ends = {0.0f, 1.0f});
    DrawnScale drawnScale() const;
    void takeOutput(osg::FrameStamp const* frame);
    double now(osg::FrameStamp const* frame) const;
};

void LidarOutputRenderer::Implementation::setUpState(osg::StateSet& state) {
    // Whatever programs and lights the scene has, the points keep exactly their colours.
    state.setAttributeAndModes(new osg::Program, keptOn);
    state.setMode(GL_LIGHTING, keptOff);
    state.setTextureMode(0, GL_TEXTURE_2D, keptOff);
    state.setAttributeAndModes(point);
}

void LidarOutputRenderer::Implementation::setColor(IntensityState::ColorFunc next, std::pair<float, float> ends) {
    color = std::move(next);
    colored = ends;
    recolorAll = true;
    scaleTold = false;
}

DrawnScale LidarOutputRenderer::Implementation::drawnScale() const {
    auto const factor = intensityScale != 0 ? 1.0 / intensityScale : 1.0;
    auto const [low, high] = std::minmax({colored.first * factor, colored.second * factor});
    DrawnScale drawn{{}, low, high};
    for (int i = 0; i < scaleSamples; ++i) {
        auto const intensity = low + (high - low) * i / (scaleSamples - 1);
        drawn.colors.push_back(color(static_cast<float>(intensity * intensityScale)));
    }
    return drawn;
}

double LidarOutputRenderer::Implementation::now(osg::FrameStamp const* frame) const {
    if (auto const* simulation = lidar->getSimulation())
        return simulation->getTimeStamp();
    return frame ? frame->getSimulationTime() : time;
}

void LidarOutputRenderer::Implementation::takeOutput(osg::FrameStamp const* frame) {
    if (!lidar)
        return;
    auto const previous = time;
    time = now(frame);
    if (time < previous) // the simulation was taken back: what it had hit lies in the future
        cloud.clear();
    if (lidar->getRevision() != revision) {
        revision = lidar->getRevision();
        if (lifetime == 0)
            cloud.clear();
        cloud.add(lidar->getHits(), time);
    }
    if (lifetime > 0)
        cloud.dropBefore(time - lifetime);
    cloud.recolor(color, intensityScale, recolorAll);
    recolorAll = false;
}

LidarOutputRenderer::LidarOutputRenderer(hyxSensor::Lidar const* lidar, bool alwaysOnTop)
    : m_implementation(std::make_unique<Implementation>()) {
    m_implementation->lidar = lidar;
    m_implementation->setUpState(*getOrCreateStateSet());
    setName("LidarOutputRenderer");
    addChild(m_implementation->cloud.node());
    m_implementation->cloud.node()->setNodeMask(~decorator::shadowMasks);
    // Points keep their size in pixels, however small the whole scan is in the picture.
    setCullingActive(false);
    m_implementation->cloud.node()->setCullingActive(false);
    setNumChildrenRequiringUpdateTraversal(1);
    setHitPointsAlwaysOnTop(alwaysOnTop);
}

LidarOutputRenderer::LidarOutputRenderer(LidarOutputRenderer const& other)
    : LidarOutputRenderer(other.m_implementation->lidar.get(), other.m_implementation->onTop) {
    setHitPointScale(other.m_implementation->pointScale);
    m_implementation->intensityScale = other.m_implementation->intensityScale;
    m_implementation->lifetime = other.m_implementation->lifetime;
    m_implementation->color = other.m_implementation->color;
    m_implementation->colored = other.m_implementation->colored;
}

LidarOutputRenderer::~LidarOutputRenderer() = default;

void LidarOutputRenderer::setHitPointScale(float scale) {
    hyx::requireArgument(scale > 0 && std::isfinite(scale), "the hit point scale must be positive and finite");
    m_implementation->pointScale = scale;
    m_implementation->point->setSize(pixelsAtScaleOne * scale);
}

float LidarOutputRenderer::getHitPointScale() const {
    return m_implementation->pointScale;
}

void LidarOutputRenderer::setIntensityScale(float scale) {
    hyx::requireArgument(std::isfinite(scale), "the intensity scale must be finite");
    m_implementation->intensityScale = scale;
    m_implementation->recolorAll = true;
    m_implementation->scaleTold = false;
}

float LidarOutputRenderer::getIntensityScale() const {
    return m_implementation->intensityScale;
}

void LidarOutputRenderer::setHitPointLifetime(float lifetime) {
    hyx::requireArgument(lifetime >= 0, "the lifetime of hit points must be 0 or more seconds");
    m_implementation->lifetime = lifetime;
}

float LidarOutputRenderer::getHitPointLifetime() const {
    return m_implementation->lifetime;
}

void LidarOutputRenderer::setHitPointsAlwaysOnTop(bool alwaysOnTop) {
    m_implementation->onTop = alwaysOnTop;
    auto* const state = getOrCreateStateSet();
    if (alwaysOnTop) {
        state->setAttributeAndModes(new osg::Depth(osg::Depth::ALWAYS, 0, 1, false));
        state->setRenderBinDetails(onTopBin, "RenderBin");
    } else {
        state->removeAttribute(osg::StateAttribute::DEPTH);
        state->setRenderBinToInherit();
    }
}

bool LidarOutputRenderer::isAlwaysRenderedOnTop() const {
    return m_implementation->onTop;
}

void LidarOutputRenderer::setIntensityColorFunctionFromMode(IntensityState::Mode mode) {
    m_implementation->setColor(presetFunction(mode));
}

void LidarOutputRenderer::setIntensityColorFunctionFromInterpolation(osg::Vec4 low, osg::Vec4 high,
                                                                     float maxIntensity) {
    setIntensityColorFunctionFromLegend({{0, low}, {1, high}}, maxIntensity);
}

void LidarOutputRenderer::setIntensityColorFunctionFromLegend(LidarOutputRendererLegend const& legend,
                                                              float maxIntensity) {
    hyx::requireArgument(maxIntensity > 0 && std::isfinite(maxIntensity),
                         "the largest intensity must be positive and finite");
    m_implementation->setColor(legendFunction(legend, maxIntensity), legendEnds(legend, maxIntensity));
}

void LidarOutputRenderer::setIntensityColorFunction(IntensityState::ColorFunc function) {
    hyx::requireArgument(static_cast<bool>(function), "the colour function is empty: give one that can be called");
    m_implementation->setColor(std::move(function));
}

void LidarOutputRenderer::setIntensityColorFunctionReplacement(LidarOutputRendererColorFunctionCallback* callback) {
    hyx::requireArgument(callback != nullptr,
                         "the colour callback is None: give a LidarOutputRendererColorFunctionCallback");
    setIntensityColorFunction(*callback->getColorFunction());
}

hyx::ref_ptr<ScalarColorMap> LidarOutputRenderer::getColorScale() const {
    auto& state = *m_implementation;
    if (!state.scaleTold)
        state.scale.tell(state.drawnScale());
    state.scaleTold = true;
    return state.scale.last();
}

void LidarOutputRenderer::traverse(osg::NodeVisitor& visitor) {
    if (visitor.getVisitorType() == osg::NodeVisitor::UPDATE_VISITOR) {
        m_implementation->takeOutput(visitor.getFrameStamp());
        // Blending costs fill rate, so only where a colour needs it.
        auto const mode = m_implementation->cloud.translucent() ? osg::StateAttribute::ON : osg::StateAttribute::OFF;
        getStateSet()->setMode(GL_BLEND, mode);
    }
    osg::Group::traverse(visitor);
}

} // namespace hyxOSG
