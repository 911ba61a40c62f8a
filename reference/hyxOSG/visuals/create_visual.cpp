// Finds the look of each thing of a simulation, and puts it into the scene.
#include "platform/hyxOSG/visuals/create_visual.h"

#include "platform/hyx/bodies/observer_frame.h"
#include "platform/hyx/bodies/rigid_body.h"
#include "platform/hyx/particles/emitter.h"
#include "platform/hyx/particles/particle_system.h"
#include "platform/hyx/particles/rigid_body_emitter.h"
#include "platform/hyxCollide/box.h"
#include "platform/hyxOSG/nodes/geometry_node.h"
#include "platform/hyxOSG/renderers/terrain_voxel_renderer.h"
#include "platform/hyxOSG/visuals/grid_axes.h"
#include "platform/hyxOSG/visuals/materials.h"
#include "platform/hyxOSG/visuals/rigid_body_render_cache.h"
#include "platform/hyxSDK/simulation.h"
#include "platform/hyxSDK/terrain_instance.h"
#include "platform/osg/attachment.h"
#include "reference/hyxOSG/visuals/follow_callback.h"
#include "reference/hyxOSG/visuals/geometry_visual.h"
#include "reference/hyxOSG/visuals/shape_nodes.h"
#include "reference/hyxOSG/visuals/visual_updater.h"
#include "reference/machinery/meshes/conversions.h"
#include "reference/machinery/meshes/shape_meshes.h"

#include <osg/Geode>
#include <osg/UserDataContainer>

#include <set>

namespace hyxOSG {
namespace {

osg::ref_ptr<osg::Node> shapeNode(hyxCollide::Geometry const& geometry, ShapeLook const& look) {
    if (osg::Node* const known = look.cache ? look.cache->find(&geometry, look.detailRatio) : nullptr)
        return known;
    osg::ref_ptr<osg::Node> const node = createShapeNode(*geometry.getShape(), look.detailRatio);
    if (look.cache)
        look.cache->insert(&geometry, look.detailRatio, node);
    return node;
}

osg::Group* addGroup(hyx::Name const& name, osg::Group& root) {
    osg::ref_ptr<osg::Group> const group = new osg::Group;
    group->setName(name);
    osg::attach(root, *group);
    return group;
}

osg::Group* addBody(hyx::RigidBody const& body, osg::Group& root, ShapeLook const& look) {
    osg::Group* const group = addGroup(body.getName(), root);
    for (auto const& geometry : body.getGeometries())
        createGeometryVisual(*geometry, *group, look);
    return group;
}

/// What carries itself along in the simulation and has a look of its own. Returns the body that this look stands for.
hyx::RigidBody* addProcess(hyx::Object* process, osg::Group& root) {
    if (auto* const particles = dynamic_cast<hyx::ParticleSystem*>(process))
        createVisual(particles, &root);
    auto* const terrain = dynamic_cast<hyxSDK::TerrainInstance*>(process);
    if (!terrain)
        return nullptr;
    createVisual(terrain, &root);
    return terrain->getRigidBody();
}

osg::Group* addAssembly(hyxSDK::Assembly const& assembly, osg::Group& root, ShapeLook const& look) {
    osg::Group* const group = addGroup(assembly.getName(), root);
    std::set<hyx::RigidBody const*> drawn;
    for (auto const& process : assembly.getProcesses())
        drawn.insert(addProcess(process, *group));
    for (auto const& body : assembly.getRigidBodies())
        if (!drawn.contains(body))
            addBody(*body, *group, look);
    for (auto const& geometry : assembly.getGeometries())
        createGeometryVisual(*geometry, *group, look);
    for (auto const& part : assembly.getAssemblies())
        addAssembly(*part, *group, look);
    return group;
}

/// The see-through box in which an emitter makes things.
osg::Group* addEmitterVolume(hyx::Emitter* emitter, osg::Group& root) {
    osg::Group* const group = addGroup(emitter->getName(), root);
    hyx::ref_ptr<hyx::Emitter> const kept = emitter;
    osg::ref_ptr<osg::MatrixTransform> const place = following([kept] {
        return osg::Matrixd::scale(toOsg(kept->getHalfExtents())) * osg::Matrixd::translate(toOsg(kept->getPosition()));
    });
    hyx::ref_ptr<hyxCollide::Box> const unit = new hyxCollide::Box(1, 1, 1);
    place->addChild(createShapeNode(*unit, 1));
    setDiffuseColor(place, hyx::Vec4f(1.0f, 0.6f, 0.1f, 0.3f));
    group->addChild(place);
    return group;
}

/// Keeps a renderer for as long as the node it is attached to.
class KeptRenderer : public osg::Object {
public:
    explicit KeptRenderer(TerrainVoxelRenderer* renderer = nullptr) : m_renderer(renderer) {}

    KeptRenderer(KeptRenderer const& other, osg::CopyOp const& operation)
        : osg::Object(other, operation), m_renderer(other.m_renderer) {}

META_Object(hyxOSG, KeptRenderer)

    private : hyx::ref_ptr<TerrainVoxelRenderer> m_renderer;
};

} // namespace

ShapeLook::ShapeLook(float detailRatio, bool evenIfSensor, RigidBodyRenderCache* cache)
    : detailRatio(detailRatio), evenIfSensor(evenIfSensor), cache(cache) {
    segmentsForDetail(detailRatio); // refuses bad ratios before anything is added to the scene
}

GeometryNode* createGeometryVisual(hyxCollide::Geometry const& geometry, osg::Group& root, ShapeLook const& look,
                                   osg::Node* own) {
    osg::ref_ptr<GeometryNode> const node = new GeometryNode(const_cast<hyxCollide::Geometry*>(&geometry));
    static_cast<osg::Node&>(*node).setName(geometry.getName());
    if (look.evenIfSensor || !geometry.isSensor()) {
        node->setRenderChild(GeometryNode::GEOMETRY_DATA, own ? own : shapeNode(geometry, look).get());
        node->shapeCallback = {
            [self = node.get(), detailRatio = look.detailRatio](hyxCollide::Geometry const* changed) {
                self->setRenderChild(GeometryNode::GEOMETRY_DATA, createShapeNode(*changed->getShape(), detailRatio));
            }};
    }
    osg::attach(root, *node);
    return node;
}

GeometryNode* createVisual(hyxCollide::Geometry const* geometry, osg::Group* root, float detailRatio, bool evenIfSensor,
                           bool autoRemove) {
    ShapeLook const look(detailRatio, evenIfSensor);
    if (!geometry || !root)
        return nullptr;
    GeometryNode* const node = createGeometryVisual(*geometry, *root, look);
    node->setAutoRemove(autoRemove);
    return node;
}

osg::Group* createVisual(hyx::RigidBody* body, osg::Group* root, float detailRatio, bool evenIfSensor) {
    ShapeLook const look(detailRatio, evenIfSensor);
    return body && root ? addBody(*body, *root, look) : nullptr;
}

osg::Group* createVisual(hyxSDK::Assembly* assembly, osg::Group* root, float detailRatio, bool evenIfSensor) {
    return createVisualTemplateCaching(assembly, root, nullptr, detailRatio, evenIfSensor);
}

osg::Group* createVisualTemplateCaching(hyxSDK::Assembly* assembly, osg::Group* root, RigidBodyRenderCache* cache,
                                        float detailRatio, bool evenIfSensor) {
    ShapeLook const look(detailRatio, evenIfSensor, cache);
    return assembly && root ? addAssembly(*assembly, *root, look) : nullptr;
}

osg::Group* createVisual(hyxSDK::Simulation* simulation, osg::Group* root, float detailRatio, bool evenIfSensor) {
    ShapeLook const look(detailRatio, evenIfSensor);
    if (!simulation || !root)
        return nullptr;
    osg::Group* const group = addGroup(simulation->getName(), *root);
    hyx::ref_ptr<VisualUpdater> const updater = new VisualUpdater(group, detailRatio, evenIfSensor);
    std::set<hyx::RigidBody const*> drawn;
    for (auto const& process : simulation->getProcesses())
        drawn.insert(addProcess(process, *group));
    for (auto const& body : simulation->getRigidBodies())
        if (!drawn.contains(body))
            updater->adopt(body);
    for (auto const& geometry : simulation->getSpace()->getGeometries())
        if (!geometry->getRigidBody())
            createGeometryVisual(*geometry, *group, look);
    simulation->add(updater);
    return group;
}

osg::Geode* createVisual(hyx::ParticleSystem* particleSystem, osg::Group* root,
                         ParticleSystemDrawable::ParticleRenderingMode renderingMode,
                         ParticleSystemDrawable::ParticleShaderMode shaderMode) {
    if (!particleSystem || !root)
        return nullptr;
    osg::ref_ptr<osg::Geode> const geode = new osg::Geode;
    geode->setName(particleSystem->getName());
    geode->addDrawable(new ParticleSystemDrawable(particleSystem, renderingMode, shaderMode));
    osg::attach(*root, *geode);
    return geode;
}

osg::Group* createVisual(hyx::RigidBodyEmitter* emitter, osg::Group* root) {
    if (!emitter || !root)
        return nullptr;
    osg::Group* const group = addEmitterVolume(emitter, *root);
    ShapeLook const look(1, false);
    for (auto const& body : emitter->getBodies())
        addBody(*body, *group, look);
    emitter->addEmitCallback([scene = osg::observer_ptr<osg::Group>(group), look](hyx::RigidBody* body) {
        osg::ref_ptr<osg::Group> alive;
        if (scene.lock(alive))
            addBody(*body, *alive, look);
    });
    return group;
}

osg::Group* createVisual(hyx::Emitter* emitter, osg::Group* root) {
    return emitter && root ? addEmitterVolume(emitter, *root) : nullptr;
}

TerrainVoxelRenderer* createVisual(hyxSDK::TerrainInstance* terrain, osg::Group* root) {
    if (!terrain || !root)
        return nullptr;
    hyxSDK::Simulation* const simulation = terrain->getSimulation();
    if (simulation)
        if (auto* const present = TerrainVoxelRenderer::find(terrain->getTerrain(), simulation))
            return present;
    hyx::ref_ptr<TerrainVoxelRenderer> const renderer = new TerrainVoxelRenderer(terrain, root);
    if (simulation)
        simulation->add(renderer);
    else
        root->getOrCreateUserDataContainer()->addUserObject(new KeptRenderer(renderer));
    return renderer;
}

osg::MatrixTransform* createVisual(hyx::ObserverFrame* observerFrame, osg::Group* root, float length) {
    if (!observerFrame || !root)
        return nullptr;
    osg::ref_ptr<osg::MatrixTransform> const place =
        following([kept = hyx::ref_ptr<hyx::ObserverFrame>(observerFrame)] { return toOsg(kept->getMatrix()); });
    place->setName(observerFrame->getName());
    place->addChild(createAxes(1, length));
    osg::attach(*root, *place);
    return place;
}

std::tuple<osg::Group*, std::vector<std::size_t>> createVisualWithGeometryConnection(hyx::RigidBody* body,
                                                                                     osg::Group* root,
                                                                                     float detailRatio,
                                                                                     bool evenIfSensor) {
    osg::Group* const group = createVisual(body, root, detailRatio, evenIfSensor);
    std::vector<std::size_t> places(group ? group->getNumChildren() : 0);
    for (std::size_t i = 0; i < places.size(); ++i)
        places[i] = i; // addBody makes one child a geometry, in their order
    return {group, places};
}

hyxSDK::EventListener* createVisualUpdater(hyxSDK::EventListener* listener, osg::Group* root) {
    if (!listener || !root)
        return nullptr;
    hyx::ref_ptr<VisualUpdater> updater = new VisualUpdater(root, 1, false, listener);
    if (hyxSDK::Simulation* const simulation = listener->getSimulation())
        simulation->add(updater);
    return updater->getSimulation() ? updater.get() : updater.release();
}

} // namespace hyxOSG
