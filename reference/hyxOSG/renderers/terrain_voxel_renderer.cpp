// The operations of the terrain's renderer, and its update in each frame.
#include "platform/hyxOSG/renderers/terrain_voxel_renderer.h"

#include "platform/hyxOSG/nodes/geometry_node.h"
#include "platform/hyxOSG/nodes/particle_system_drawable.h"
#include "platform/hyxSDK/simulation.h"
#include "platform/hyxSDK/terrain_instance.h"
#include "reference/hyxOSG/renderers/frame_update.h"
#include "reference/hyxOSG/renderers/soil_meshes.h"
#include "reference/hyxOSG/renderers/terrain_surface.h"
#include "reference/hyxOSG/renderers/terrain_voxels.h"
#include "reference/hyxOSG/renderers/told_scale.h"
#include "reference/machinery/meshes/conversions.h"

#include <osg/Geode>

#include <algorithm>
#include <stdexcept>
#include <vector>

namespace hyxOSG {

namespace {

// All renderers that live, for `find`; they neither own nor are owned here.
std::vector<TerrainVoxelRenderer*>& renderers() {
    static std::vector<TerrainVoxelRenderer*> living;
    return living;
}

bool isIn(hyxTerrain::Terrain const* terrain, hyxSDK::Simulation const& simulation) {
    for (auto const& process : simulation.getProcesses())
        if (auto const* instance = dynamic_cast<hyxSDK::TerrainInstance const*>(process.get()))
            if (instance->getTerrain() == terrain)
                return true;
    return false;
}

template <class T>
T* required(T* object) {
    if (!object)
        throw std::invalid_argument("a terrain renderer needs a terrain");
    return object;
}

void show(osg::Node* node, bool visible) {
    node->setNodeMask(visible ? ~0u : 0u);
}

} // namespace

struct TerrainVoxelRenderer::Implementation {
    hyx::ref_ptr<hyxTerrain::Terrain> terrain;
    hyx::ref_ptr<hyxSDK::TerrainInstance> instance; ///< null for a terrain outside of a simulation
    TerrainColoring coloring;
    VoxelLook voxelLook;
    bool heightField = true;
    bool soilParticles = true;
    bool soilMeshes = false;
    bool restyled = true; ///< colours or selection changed since the last update
    hyx::String modelFile, textureFile;
    hyx::UInt drawnRevision = 0;
    ToldScale scale;

    osg::ref_ptr<GeometryNode> node = new GeometryNode;
    osg::ref_ptr<osg::MatrixTransform> content = new osg::MatrixTransform;
    TerrainSurface surface;
    TerrainVoxels voxels;
    SoilMeshes meshes;
    osg::ref_ptr<osg::MatrixTransform> grains = new osg::MatrixTransform;
    ShownNode shown;

    Implementation(hyxTerrain::Terrain* terrain, hyxSDK::TerrainInstance* instance, osg::Group* parent);
    void update();
    void place();
    void updateGrains();
};

TerrainVoxelRenderer::Implementation::Implementation(hyxTerrain::Terrain* terrain, hyxSDK::TerrainInstance* instance,
                                                     osg::Group* parent)
    : terrain(terrain),
      instance(instance),
      surface(*terrain),
      voxels(*terrain),
      shown(node, parent, "a terrain renderer", [this] { update(); }) {
    coloring.materialColors.assign({hyxRender::Color(0.58f, 0.47f, 0.33f), hyxRender::Color(0.42f, 0.42f, 0.44f),
                                    hyxRender::Color(0.85f, 0.77f, 0.55f), hyxRender::Color(0.36f, 0.22f, 0.14f)});
    node->setName("terrain");
    if (instance)
        node->setGeometry(instance->getGeometry());
    // Grains are in world coordinates, the rest in those of the terrain.
    osg::ref_ptr<osg::Geode> const geode = new osg::Geode;
    geode->addDrawable(new ParticleSystemDrawable(terrain->getSoilParticles()));
    grains->addChild(geode);
    for (osg::Node* part :
         {static_cast<osg::Node*>(surface.node()), voxels.node(), meshes.node(), static_cast<osg::Node*>(grains.get())})
        content->addChild(part);
    node->setRenderChild(GeometryNode::GEOMETRY_DATA, content);
    update();
}

void TerrainVoxelRenderer::Implementation::update() {
    place();
    show(surface.node(), heightField);
    if (heightField)
        surface.update(coloring, restyled);
    bool const changed = drawnRevision != terrain->getRevision();
    show(voxels.node(), voxelLook.drawsSomething());
    if (restyled || (changed && voxelLook.drawsSomething()))
        voxels.update(voxelLook);
    updateGrains();
    drawnRevision = terrain->getRevision();
    restyled = false;
}

// The node follows the instance's geometry, which has its origin in the middle of the terrain.
void TerrainVoxelRenderer::Implementation::place() {
    osg::Vec3d const corner = toOsg(terrain->getPosition());
    node->updateTransform();
    osg::Matrixd const local = osg::Matrixd::translate(corner) * osg::Matrixd::inverse(node->getMatrix());
    if (content->getMatrix() != local)
        content->setMatrix(local);
    if (osg::Matrixd const back = osg::Matrixd::translate(-corner); grains->getMatrix() != back)
        grains->setMatrix(back);
}

void TerrainVoxelRenderer::Implementation::updateGrains() {
    show(grains, soilParticles && !soilMeshes);
    show(meshes.node(), soilMeshes);
    if (soilMeshes)
        meshes.update(*terrain->getSoilParticles(), terrain->getPosition());
}

TerrainVoxelRenderer::TerrainVoxelRenderer(hyxTerrain::Terrain* terrain, osg::Group* parent)
    : m_implementation(std::make_unique<Implementation>(required(terrain), nullptr, parent)) {
    renderers().push_back(this);
}

TerrainVoxelRenderer::TerrainVoxelRenderer(hyxSDK::TerrainInstance* instance, osg::Group* parent)
    : m_implementation(std::make_unique<Implementation>(required(instance)->getTerrain(), instance, parent)) {
    renderers().push_back(this);
}

TerrainVoxelRenderer::~TerrainVoxelRenderer() {
    std::erase(renderers(), this);
}

TerrainVoxelRenderer* TerrainVoxelRenderer::find(hyxTerrain::Terrain const* terrain,
                                                 hyxSDK::Simulation const* simulation) {
    if (!terrain || (simulation && !isIn(terrain, *simulation)))
        return nullptr;
    auto const found =
        std::find_if(renderers().begin(), renderers().end(), [terrain](TerrainVoxelRenderer const* renderer) {
            return renderer->getTerrain() == terrain && !renderer->m_implementation->shown.isRemoved();
        });
    return found != renderers().end() ? *found : nullptr;
}

hyxTerrain::Terrain* TerrainVoxelRenderer::getTerrain() const {
    return m_implementation->terrain.get();
}

GeometryNode* TerrainVoxelRenderer::getNode() const {
    return m_implementation->node.get();
}

/// Takes a setting; what is drawn follows with the next update.
template <class T>
void TerrainVoxelRenderer::restyle(T& setting, T const& value) {
    setting = value;
    m_implementation->restyled = true;
}

void TerrainVoxelRenderer::setRenderVoxelSolidMass(bool enable) {
    restyle(m_implementation->voxelLook.solidMass, enable);
}

bool TerrainVoxelRenderer::getRenderVoxelSolidMass() const {
    return m_implementation->voxelLook.solidMass;
}

void TerrainVoxelRenderer::setRenderVoxelFluidMass(bool enable) {
    restyle(m_implementation->voxelLook.fluidMass, enable);
}

bool TerrainVoxelRenderer::getRenderVoxelFluidMass() const {
    return m_implementation->voxelLook.fluidMass;
}

void TerrainVoxelRenderer::setRenderVoxelBoundingBox(bool enable) {
    restyle(m_implementation->voxelLook.edges, enable);
}

bool TerrainVoxelRenderer::getRenderVoxelBoundingBox() const {
    return m_implementation->voxelLook.edges;
}

void TerrainVoxelRenderer::setRenderHeightField(bool enable) {
    restyle(m_implementation->heightField, enable);
}

bool TerrainVoxelRenderer::getRenderHeightField() const {
    return m_implementation->heightField;
}

void TerrainVoxelRenderer::setRenderVoxelCompaction(bool enable) {
    restyle(m_implementation->voxelLook.compaction, enable);
}

bool TerrainVoxelRenderer::getRenderVoxelCompaction() const {
    return m_implementation->voxelLook.compaction;
}

void TerrainVoxelRenderer::setRenderTerrainMaterials(bool enable) {
    restyle(m_implementation->coloring.materials, enable);
}

bool TerrainVoxelRenderer::getRenderTerrainMaterials() const {
    return m_implementation->coloring.materials;
}

void TerrainVoxelRenderer::setRenderDefaultTerrainMaterial(bool enable) {
    restyle(m_implementation->coloring.defaultMaterial, enable);
}

bool TerrainVoxelRenderer::getRenderDefaultTerrainMaterial() const {
    return m_implementation->coloring.defaultMaterial;
}

void TerrainVoxelRenderer::setRenderVelocityField(bool enable) {
    restyle(m_implementation->voxelLook.velocities, enable);
}

bool TerrainVoxelRenderer::getRenderVelocityField() const {
    return m_implementation->voxelLook.velocities;
}

void TerrainVoxelRenderer::setRenderSoilParticles(bool enable) {
    restyle(m_implementation->soilParticles, enable);
}

bool TerrainVoxelRenderer::getRenderSoilParticles() const {
    return m_implementation->soilParticles;
}

void TerrainVoxelRenderer::setRenderSoilParticlesMesh(bool enable) {
    restyle(m_implementation->soilMeshes, enable);
}

bool TerrainVoxelRenderer::getRenderSoilParticlesMesh() const {
    return m_implementation->soilMeshes;
}

void TerrainVoxelRenderer::setRenderHeights(bool enable, hyx::RangeReal range) {
    m_implementation->coloring.heightRange = range;
    restyle(m_implementation->coloring.heights, enable);
}

bool TerrainVoxelRenderer::getRenderHeights() const {
    return m_implementation->coloring.heights;
}

void TerrainVoxelRenderer::setRenderCompaction(bool enable, hyx::RangeReal range) {
    m_implementation->coloring.compactionRange = range;
    restyle(m_implementation->coloring.compaction, enable);
}

bool TerrainVoxelRenderer::getRenderCompaction() const {
    return m_implementation->coloring.compaction;
}

void TerrainVoxelRenderer::setTerrainMaterialsColors(hyxRender::ColorVector const& colors) {
    restyle(m_implementation->coloring.materialColors, colors);
}

hyxRender::ColorVector TerrainVoxelRenderer::getTerrainMaterialColors() const {
    return m_implementation->coloring.materialColors;
}

void TerrainVoxelRenderer::setColor(hyx::Vec4f color) {
    restyle(m_implementation->coloring.color, requireColor(color));
}

hyx::Vec4f TerrainVoxelRenderer::getColor() const {
    return m_implementation->coloring.color;
}

void TerrainVoxelRenderer::setVelocityFieldLineColor(hyx::Vec4 const& color) {
    restyle(m_implementation->voxelLook.velocityColor, requireColor(hyx::Vec4f(color)));
}

void TerrainVoxelRenderer::setMaxVoxelValueColor(hyx::Vec4f const& color) {
    restyle(m_implementation->voxelLook.maximumColor, requireColor(color));
}

void TerrainVoxelRenderer::setSoilParticleMeshData(hyx::String model, hyx::String texture) {
    m_implementation->meshes.load(model, texture);
    m_implementation->modelFile = model;
    m_implementation->textureFile = texture;
}

hyx::String TerrainVoxelRenderer::getSoilParticleMeshModelFilename() const {
    return m_implementation->modelFile;
}

hyx::String TerrainVoxelRenderer::getSoilParticleMeshTextureFilename() const {
    return m_implementation->textureFile;
}

hyx::ref_ptr<ScalarColorMap> TerrainVoxelRenderer::getColorScale() {
    m_implementation->update();
    auto scale = m_implementation->heightField ? m_implementation->surface.scale(m_implementation->coloring)
                                               : std::optional<DrawnScale>();
    if (!scale)
        scale = m_implementation->voxels.scale(m_implementation->voxelLook);
    return scale ? m_implementation->scale.tell(*std::move(scale)) : hyx::ref_ptr<ScalarColorMap>();
}

void TerrainVoxelRenderer::update() {
    m_implementation->update();
}

void TerrainVoxelRenderer::removeNotification() {
    m_implementation->shown.remove();
}

} // namespace hyxOSG
