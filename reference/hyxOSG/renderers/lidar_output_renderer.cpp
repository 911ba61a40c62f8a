#include "platform/hyxOSG/renderers/lidar_output_renderer.h"

#include "platform/hyxOSG/renderers/lidar_output_renderer_color_function_callback.h"
#include "platform/hyxSDK/simulation.h"
#include "platform/hyxSensor/lidar.h"
#include "reference/hyx/values/number_checks.h"
#include "reference/hyxOSG/renderers/color_presets.h"
#include "reference/hyxOSG/renderers/lidar_color_table.h"
#include "reference/hyxOSG/renderers/lidar_point_cloud.h"
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

constexpr float pixels_at_scale_one = 3.0f;
constexpr int on_top_bin = 1000;

LidarColorTable preset_table(int preset) {
    auto const& colors = preset_colors(preset);
    auto const function = [&colors](float intensity) {
        auto const at = std::clamp(intensity, 0.0f, 1.0f) * static_cast<float>(colors.size() - 1);
        auto const index = std::min(static_cast<std::size_t>(at), colors.size() - 2);
        return colors[index] + (colors[index + 1] - colors[index]) * (at - static_cast<float>(index));
    };
    return LidarColorTable::of_bounded(function, 0.0f, 1.0f);
}

} // namespace

struct LidarOutputRenderer::Impl {
    hyx::ref_ptr<hyxSensor::Lidar const> lidar;
    LidarPointCloud cloud;
    LidarColorTable table = preset_table(IntensityState::RAINBOW);
    osg::ref_ptr<osg::Point> point = new osg::Point(pixels_at_scale_one);
    float pointScale = 1;
    float intensityScale = 1;
    float lifetime = 0;
    bool onTop = false;
    bool recolorAll = false;
    hyx::UInt revision = 0; // of the hits that were taken last
    double time = 0;

    void set_up_state(osg::StateSet& state);
    void set_table(LidarColorTable next);
    void take_output(osg::FrameStamp const* frame);
    double now(osg::FrameStamp const* frame) const;
};

void LidarOutputRenderer::Impl::set_up_state(osg::StateSet& state) {
    // Whatever programs and lights the scene has, the points keep exactly their colours.
    constexpr auto off = osg::StateAttribute::OFF | osg::StateAttribute::PROTECTED;
    state.setAttributeAndModes(new osg::Program, osg::StateAttribute::ON | osg::StateAttribute::PROTECTED);
    state.setMode(GL_LIGHTING, off);
    state.setTextureMode(0, GL_TEXTURE_2D, off);
    state.setAttributeAndModes(point);
}

void LidarOutputRenderer::Impl::set_table(LidarColorTable next) {
    table = std::move(next);
    recolorAll = true;
}

double LidarOutputRenderer::Impl::now(osg::FrameStamp const* frame) const {
    if (auto const* simulation = lidar->getSimulation())
        return simulation->getTimeStamp();
    return frame ? frame->getSimulationTime() : time;
}

void LidarOutputRenderer::Impl::take_output(osg::FrameStamp const* frame) {
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
        cloud.drop_before(time - lifetime);
    cloud.recolor(table, intensityScale, recolorAll);
    recolorAll = false;
}

LidarOutputRenderer::LidarOutputRenderer(hyxSensor::Lidar const* lidar, bool alwaysOnTop)
    : m_impl(std::make_unique<Impl>()) {
    m_impl->lidar = lidar;
    m_impl->set_up_state(*getOrCreateStateSet());
    setName("LidarOutputRenderer");
    addChild(m_impl->cloud.node());
    m_impl->cloud.node()->setNodeMask(~(decorator::CASTS_SHADOWS | decorator::RECEIVES_SHADOWS));
    setNumChildrenRequiringUpdateTraversal(1);
    setHitPointsAlwaysOnTop(alwaysOnTop);
}

LidarOutputRenderer::LidarOutputRenderer(LidarOutputRenderer const& other)
    : LidarOutputRenderer(other.m_impl->lidar.get(), other.m_impl->onTop) {
    setHitPointScale(other.m_impl->pointScale);
    m_impl->intensityScale = other.m_impl->intensityScale;
    m_impl->lifetime = other.m_impl->lifetime;
    m_impl->table = other.m_impl->table;
}

LidarOutputRenderer::~LidarOutputRenderer() = default;

void LidarOutputRenderer::setHitPointScale(float scale) {
    hyx::requireArgument(scale > 0 && std::isfinite(scale), "the hit point scale must be positive and finite");
    m_impl->pointScale = scale;
    m_impl->point->setSize(pixels_at_scale_one * scale);
}

float LidarOutputRenderer::getHitPointScale() const {
    return m_impl->pointScale;
}

void LidarOutputRenderer::setIntensityScale(float scale) {
    hyx::requireArgument(std::isfinite(scale), "the intensity scale must be finite");
    m_impl->intensityScale = scale;
    m_impl->recolorAll = true;
}

float LidarOutputRenderer::getIntensityScale() const {
    return m_impl->intensityScale;
}

void LidarOutputRenderer::setHitPointLifetime(float lifetime) {
    hyx::requireArgument(lifetime >= 0, "the lifetime of hit points must be 0 or more seconds");
    m_impl->lifetime = lifetime;
}

float LidarOutputRenderer::getHitPointLifetime() const {
    return m_impl->lifetime;
}

void LidarOutputRenderer::setHitPointsAlwaysOnTop(bool alwaysOnTop) {
    m_impl->onTop = alwaysOnTop;
    auto* const state = getOrCreateStateSet();
    if (alwaysOnTop) {
        state->setAttributeAndModes(new osg::Depth(osg::Depth::ALWAYS, 0, 1, false));
        state->setRenderBinDetails(on_top_bin, "RenderBin");
    } else {
        state->removeAttribute(osg::StateAttribute::DEPTH);
        state->setRenderBinToInherit();
    }
}

bool LidarOutputRenderer::isAlwaysRenderedOnTop() const {
    return m_impl->onTop;
}

void LidarOutputRenderer::setIntensityColorFunctionFromMode(IntensityState::Mode mode) {
    m_impl->set_table(preset_table(mode));
}

void LidarOutputRenderer::setIntensityColorFunctionFromInterpolation(osg::Vec4 low, osg::Vec4 high,
                                                                     float maxIntensity) {
    setIntensityColorFunctionFromLegend({{0, low}, {1, high}}, maxIntensity);
}

void LidarOutputRenderer::setIntensityColorFunctionFromLegend(LidarOutputRendererLegend const& legend,
                                                              float maxIntensity) {
    hyx::requireArgument(maxIntensity > 0 && std::isfinite(maxIntensity),
                         "the largest intensity must be positive and finite");
    m_impl->set_table(LidarColorTable::of_legend(legend, maxIntensity));
}

void LidarOutputRenderer::setIntensityColorFunction(IntensityState::ColorFunc function) {
    hyx::requireArgument(static_cast<bool>(function), "the colour function is empty: give one that can be called");
    m_impl->set_table(LidarColorTable::of_any(std::move(function)));
}

void LidarOutputRenderer::setIntensityColorFunctionReplacement(LidarOutputRendererColorFunctionCallback* callback) {
    hyx::requireArgument(callback != nullptr,
                         "the colour callback is None: give a LidarOutputRendererColorFunctionCallback");
    setIntensityColorFunction(*callback->getColorFunction());
}

void LidarOutputRenderer::traverse(osg::NodeVisitor& visitor) {
    if (visitor.getVisitorType() == osg::NodeVisitor::UPDATE_VISITOR) {
        m_impl->take_output(visitor.getFrameStamp());
        // Blending costs fill rate, so only where a colour needs it.
        auto const mode = m_impl->table.translucent() ? osg::StateAttribute::ON : osg::StateAttribute::OFF;
        getStateSet()->setMode(GL_BLEND, mode);
    }
    osg::Group::traverse(visitor);
}

} // namespace hyxOSG
