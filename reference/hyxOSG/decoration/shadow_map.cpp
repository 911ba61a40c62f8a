// Draws depth maps from the light, and tells the shaders where they are.
#include "reference/hyxOSG/decoration/shadow_map.h"

#include "platform/hyxOSG/application/example_application.h"
#include "reference/hyxOSG/decoration/caster_grid.h"
#include "reference/hyxOSG/decoration/casters.h"
#include "reference/hyxOSG/decoration/light_view.h"
#include "reference/machinery/shading/node_state.h"
#include "reference/machinery/shading/shadow_support.h"

#include <osg/ColorMask>
#include <osg/ComputeBoundsVisitor>
#include <osg/PolygonOffset>
#include <osgShadow/ShadowedScene>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

namespace hyxOSG::decorator {

/// One depth map and the camera that draws it.
struct ShadowMap::Map {
    osg::ref_ptr<osg::Texture2D> texture;
    osg::ref_ptr<osg::Camera> camera;
    std::optional<std::uint64_t> stamp; ///< of the casters as they are drawn in it
};

/// The maps of one viewing camera.
struct ShadowMap::Maps {
    std::array<Map, MAX_SHADOW_MAPS> maps;
    CasterGrid grid;
    unsigned int lastFrame = 0;
};

namespace {

// Soft shadows read the depths themselves, hard ones what comparing with them gives.
osg::ref_ptr<osg::Texture2D> createDepthTexture(unsigned int size, bool compared) {
    osg::ref_ptr<osg::Texture2D> texture = new osg::Texture2D;
    texture->setTextureSize(static_cast<int>(size), static_cast<int>(size));
    texture->setInternalFormat(GL_DEPTH_COMPONENT24);
    texture->setSourceFormat(GL_DEPTH_COMPONENT);
    texture->setSourceType(GL_UNSIGNED_INT);
    texture->setShadowComparison(compared);
    texture->setShadowTextureMode(osg::Texture2D::LUMINANCE);
    texture->setFilter(osg::Texture2D::MIN_FILTER, osg::Texture2D::NEAREST);
    texture->setFilter(osg::Texture2D::MAG_FILTER, osg::Texture2D::NEAREST);
    texture->setWrap(osg::Texture2D::WRAP_S, osg::Texture2D::CLAMP_TO_BORDER);
    texture->setWrap(osg::Texture2D::WRAP_T, osg::Texture2D::CLAMP_TO_BORDER);
    texture->setBorderColor(osg::Vec4(1, 1, 1, 1));
    return texture;
}

osg::ref_ptr<osg::StateSet> createCasterState() {
    osg::ref_ptr<osg::StateSet> state = new osg::StateSet;
    state->setAttribute(new osg::ColorMask(false, false, false, false), forced);
    state->setAttributeAndModes(new osg::PolygonOffset(1.5f, 4.0f), forced);
    state->setMode(GL_LIGHTING, osg::StateAttribute::OFF | osg::StateAttribute::OVERRIDE);
    state->setMode(GL_BLEND, osg::StateAttribute::OFF | osg::StateAttribute::OVERRIDE);
    return state;
}

osg::Vec4d lightPosition(osg::LightSource const& source, osg::Matrixd const& eyeToScene) {
    osg::Vec4d const position = source.getLight()->getPosition();
    return source.getReferenceFrame() == osg::LightSource::ABSOLUTE_RF ? position * eyeToScene : position;
}

// The depths at which the next map takes over, between evenly and geometrically spread.
std::array<double, MAX_SHADOW_MAPS> splitDepths(std::vector<osg::Vec3d> const& visible, osg::Matrixd const& view) {
    double nearest = std::numeric_limits<double>::max();
    double farthest = 0;
    for (osg::Vec3d const& point : visible) {
        double const depth = -(point * view).z();
        nearest = std::min(nearest, depth);
        farthest = std::max(farthest, depth);
    }
    nearest = std::max(nearest, farthest * 0.01);
    std::array<double, MAX_SHADOW_MAPS> depths{};
    for (unsigned int i = 0; i < MAX_SHADOW_MAPS; ++i) {
        double const part = (i + 1.0) / MAX_SHADOW_MAPS;
        depths[i] = 0.5 * (nearest + (farthest - nearest) * part) + 0.5 * nearest * std::pow(farthest / nearest, part);
    }
    return depths;
}

unsigned int contextOf(osgUtil::CullVisitor& visitor) {
    return visitor.getState() ? visitor.getState()->getContextID() : 0;
}

/// What is the same for all maps but the light.
LightViewNeeds needsOf(ShadowMap::Settings const& settings, Casters& casters, osg::Matrixd const& eyeToScene) {
    LightViewNeeds needs;
    needs.casters = casters.getBoundingBox();
    needs.casterCorners = casters.corners();
    needs.cameraDirection = osg::Vec3d(-eyeToScene(2, 0), -eyeToScene(2, 1), -eyeToScene(2, 2));
    needs.mapSize = settings.mapSize;
    needs.alignWithCamera = settings.alignWithCamera;
    needs.lampSpread = settings.shading.softShadows ? LAMP_SPREAD : 0;
    return needs;
}

/// The width of a pixel in metres: for each metre of distance, and besides.
osg::Vec2f pixelSize(osgUtil::CullVisitor& visitor) {
    osg::Matrixd const& projection = *visitor.getProjectionMatrix();
    osg::Viewport const* const viewport = visitor.getViewport();
    double const height = std::abs(projection(1, 1)) * (viewport ? viewport->height() : 0);
    auto const size = height > 0 ? static_cast<float>(2 / height) : 0.0f;
    return projection(2, 3) != 0 ? osg::Vec2f(size, 0) : osg::Vec2f(0, size);
}

/// What the shadowed state needs besides its maps, gathered map by map.
class MapUniforms {
public:
    MapUniforms(unsigned int maps, unsigned int mapSize, osg::Vec2f const& pixel)
        : m_matrix(new osg::Uniform(osg::Uniform::FLOAT_MAT4, "hyx_shadowMatrix", static_cast<int>(maps))),
          m_texel(new osg::Uniform(osg::Uniform::FLOAT, "hyx_shadowTexel", static_cast<int>(maps))),
          m_depth(new osg::Uniform(osg::Uniform::FLOAT, "hyx_splitDepth", static_cast<int>(maps))),
          m_penumbra(new osg::Uniform(osg::Uniform::FLOAT_VEC2, "hyx_penumbra", static_cast<int>(maps))),
          m_size(new osg::Uniform("hyx_shadowMapSize", static_cast<float>(mapSize))),
          m_pixel(new osg::Uniform("hyx_pixelSize", pixel)) {}

    void setMap(unsigned int map, osg::Matrixd const& eyeToScene, LightView const& fit) {
        m_matrix->setElement(map, osg::Matrixf(eyeToScene * fit.textureMatrix()));
        m_texel->setElement(map, static_cast<float>(fit.texelSize));
        m_penumbra->setElement(map, osg::Vec2f(fit.penumbra));
    }

    /// A map on which nothing lies: w is never positive there.
    void setEmpty(unsigned int map) {
        m_matrix->setElement(map, osg::Matrixf(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0));
    }

    void setDepth(unsigned int map, double depth) { m_depth->setElement(map, static_cast<float>(depth)); }

    void addTo(osg::StateSet& state) const {
        for (osg::Uniform* uniform :
             {m_matrix.get(), m_texel.get(), m_depth.get(), m_penumbra.get(), m_size.get(), m_pixel.get()})
            state.addUniform(uniform);
    }

private:
    osg::ref_ptr<osg::Uniform> m_matrix, m_texel, m_depth, m_penumbra, m_size, m_pixel;
};

} // namespace

ShadowMap::ShadowMap(Settings const& settings, osg::LightSource* light)
    : m_settings(settings), m_light(light), m_shadowed(createShadingState(settings.shading)) {
    ShadingOptions plain = settings.shading;
    plain.shadowMaps = 0;
    plain.blackShadows = false;
    m_unshadowed = createShadingState(plain);
}

ShadowMap::~ShadowMap() = default;

void ShadowMap::init() {
    _dirty = false;
}

void ShadowMap::update(osg::NodeVisitor& visitor) {
    _shadowedScene->osg::Group::traverse(visitor);
}

void ShadowMap::cleanSceneGraph() {
    m_maps.clear();
}

void ShadowMap::cull(osgUtil::CullVisitor& visitor) {
    osg::ref_ptr<osg::LightSource> light;
    if (!m_light.lock(light) || !light->getLight()) {
        drawScene(visitor, *m_unshadowed);
        return;
    }
    osg::Matrixd const view = *visitor.getModelViewMatrix();
    osg::Matrixd const eyeToScene = osg::Matrixd::inverse(view);
    osg::Matrixd const projection = *visitor.getProjectionMatrix();

    Casters casters;
    osg::ComputeBoundsVisitor scene;
    _shadowedScene->osg::Group::traverse(casters);
    _shadowedScene->osg::Group::traverse(scene);
    if (m_settings.casterLimit > 0 && casters.all().size() > m_settings.casterLimit && processorDraws()) {
        drawScene(visitor, *m_unshadowed);
        return;
    }

    LightViewNeeds needs = needsOf(m_settings, casters, eyeToScene);
    needs.light = lightPosition(*light, eyeToScene);
    double const unlimited = std::numeric_limits<double>::max();
    std::vector<osg::Vec3d> const visible = visibleCorners(scene.getBoundingBox(), view, projection, 0, unlimited);
    unsigned int const count = m_settings.shading.shadowMaps;
    bool const usesGrid = m_settings.shading.softShadows && count == 1; // to look up once is not worth a grid
    MapUniforms uniforms(count, m_settings.mapSize, pixelSize(visitor));
    std::array<double, MAX_SHADOW_MAPS> depths{unlimited, unlimited, unlimited};
    if (count > 1 && !visible.empty())
        depths = splitDepths(visible, view);

    osg::ref_ptr<osg::StateSet> state;
    Maps& maps = mapsFor(visitor);
    for (unsigned int i = 0; i < count; ++i) {
        uniforms.setDepth(i, depths[i]);
        needs.visible = count == 1 ? visible
                                   : visibleCorners(scene.getBoundingBox(), view, projection, i ? depths[i - 1] : 0,
                                                    i + 1 < count ? depths[i] : unlimited);
        std::optional<LightView> const fit = fitLightView(needs);
        if (!fit) {
            uniforms.setEmpty(i);
            continue;
        }
        if (!state)
            state = new osg::StateSet(*m_shadowed);
        drawMap(visitor, maps.maps[i], *fit, casters.stamp());
        if (usesGrid)
            maps.grid.fill(casters.all(), *fit, m_settings.mapSize);
        uniforms.setMap(i, eyeToScene, *fit);
        state->setTextureAttribute(SHADOW_MAP_UNIT + i, maps.maps[i].texture);
    }
    if (!state) {
        drawScene(visitor, *m_unshadowed);
        return;
    }
    uniforms.addTo(*state);
    if (usesGrid)
        state->setTextureAttribute(CASTER_GRID_UNIT, maps.grid.texture());
    drawScene(visitor, *state);
}

ShadowMap::Maps& ShadowMap::mapsFor(osgUtil::CullVisitor& visitor) {
    unsigned int const frame = visitor.getFrameStamp() ? visitor.getFrameStamp()->getFrameNumber() : 0;
    forgetUnused(frame);
    std::unique_ptr<Maps>& maps = m_maps[visitor.getCurrentCamera()];
    if (!maps)
        maps = std::make_unique<Maps>();
    maps->lastFrame = frame;
    return *maps;
}

void ShadowMap::forgetUnused(unsigned int frame) {
    std::erase_if(m_maps, [frame](auto const& entry) { return entry.second->lastFrame + 60 < frame; });
}

void ShadowMap::drawMap(osgUtil::CullVisitor& visitor, Map& map, LightView const& fit,
                        std::optional<std::uint64_t> casters) {
    if (!map.camera) {
        map.texture = createDepthTexture(m_settings.mapSize, !m_settings.shading.softShadows);
        map.camera = new osg::Camera;
        map.camera->setStateSet(createCasterState()); // first: the camera keeps its viewport in it
        map.camera->setReferenceFrame(osg::Camera::ABSOLUTE_RF_INHERIT_VIEWPOINT);
        map.camera->setCullCallback(new CameraCullCallback(this));
        map.camera->setClearMask(GL_DEPTH_BUFFER_BIT);
        map.camera->setImplicitBufferAttachmentMask(0, 0); // no colours beside the depths
        map.camera->setComputeNearFarMode(osg::Camera::DO_NOT_COMPUTE_NEAR_FAR);
        map.camera->setCullingMode(osg::CullSettings::VIEW_FRUSTUM_SIDES_CULLING);
        map.camera->setViewport(0, 0, static_cast<int>(m_settings.mapSize), static_cast<int>(m_settings.mapSize));
        // After the pictures that the scene itself shows, so that a map is drawn last before it is read.
        map.camera->setRenderOrder(osg::Camera::PRE_RENDER, 100);
        map.camera->setRenderTargetImplementation(osg::Camera::FRAME_BUFFER_OBJECT);
        map.camera->attach(osg::Camera::DEPTH_BUFFER, map.texture);
        map.camera->setCullMask(ExampleApplication::CASTS_SHADOWS_MASK);
    }
    unsigned int const mask = visitor.getTraversalMask();
    if (!(mask & ExampleApplication::CASTS_SHADOWS_MASK) || !map.texture->getTextureObject(contextOf(visitor)))
        map.stamp.reset();
    bool const same = fit.view == map.camera->getViewMatrix() && fit.projection == map.camera->getProjectionMatrix();
    if (same && map.stamp && map.stamp == casters)
        return;
    map.stamp = casters;
    map.camera->setViewMatrix(fit.view);
    map.camera->setProjectionMatrix(fit.projection);
    visitor.setTraversalMask(mask & ExampleApplication::CASTS_SHADOWS_MASK);
    map.camera->accept(visitor);
    visitor.setTraversalMask(mask);
}

void ShadowMap::drawScene(osgUtil::CullVisitor& visitor, osg::StateSet& state) {
    visitor.pushStateSet(&state);
    _shadowedScene->osg::Group::traverse(visitor);
    visitor.popStateSet();
}

void ShadowMap::resizeGLObjectBuffers(unsigned int maxSize) {
    for (auto const& [camera, maps] : m_maps) {
        maps->grid.texture()->resizeGLObjectBuffers(maxSize);
        for (Map const& map : maps->maps)
            if (map.camera) {
                map.camera->resizeGLObjectBuffers(maxSize);
                map.texture->resizeGLObjectBuffers(maxSize);
            }
    }
    m_shadowed->resizeGLObjectBuffers(maxSize);
    m_unshadowed->resizeGLObjectBuffers(maxSize);
}

void ShadowMap::releaseGLObjects(osg::State* state) const {
    for (auto const& [camera, maps] : m_maps) {
        maps->grid.texture()->releaseGLObjects(state);
        for (Map& map : maps->maps)
            if (map.camera) {
                map.camera->releaseGLObjects(state);
                map.texture->releaseGLObjects(state);
                map.stamp.reset();
            }
    }
    m_shadowed->releaseGLObjects(state);
    m_unshadowed->releaseGLObjects(state);
}

} // namespace hyxOSG::decorator
