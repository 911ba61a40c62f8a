// Takes a scene's parts down, and puts them back in their order.
#include "reference/hyxOSG/application/scene_backup.h"

#include "reference/hyxSDK/simulation_implementation.h"

#include <osg/NodeVisitor>

#include <set>

namespace hyxOSG {
namespace {

/// Collects each group below a node once.
class GroupCollector : public osg::NodeVisitor {
public:
    GroupCollector() : osg::NodeVisitor(TRAVERSE_ALL_CHILDREN) { setNodeMaskOverride(~0u); }

    void apply(osg::Group& group) override {
        if (m_seen.insert(&group).second) {
            groups.emplace_back(&group, SceneGraph::childrenOf(group));
            traverse(group);
        }
    }

    std::vector<std::pair<osg::ref_ptr<osg::Group>, SceneGraph::Nodes>> groups;

private:
    std::set<osg::Group const*> m_seen;
};

} // namespace

SceneBackup::SceneBackup(hyxSDK::Simulation& simulation, SceneGraph const& graph)
    : m_bodies(simulation.getRigidBodies()),
      m_geometries(simulation.implementation().loneGeometries),
      m_constraints(simulation.getConstraints()),
      m_processes(simulation.getProcesses()),
      m_frames(simulation.getFrames()),
      m_assemblies(simulation.getAssemblies()),
      m_materials(simulation.getMaterials()),
      m_state(simulation.saveState()),
      m_content(graph.content()) {
    GroupCollector collector;
    graph.sceneRoot()->accept(collector);
    graph.libraryRoot()->accept(collector);
    m_groups = std::move(collector.groups);
    auto const& inside = simulation.implementation();
    for (auto const& [pair, material] : inside.world.contactMaterials)
        m_contactMaterials.push_back(material);
    for (size_t i = 0; i < inside.listeners.size(); ++i)
        m_listeners.emplace_back(inside.listeners[i], inside.priorities[i]);
}

void SceneBackup::restore(hyxSDK::Simulation& simulation, SceneGraph& graph) const {
    auto const add = [&simulation](auto const& list) {
        for (auto const& object : list)
            simulation.add(object.get());
    };
    add(m_materials);
    add(m_contactMaterials);
    add(m_geometries);
    add(m_bodies);
    add(m_frames);
    add(m_constraints);
    add(m_processes);
    add(m_assemblies);
    for (auto const& [listener, priority] : m_listeners)
        simulation.add(listener.get(), priority);
    simulation.restoreState(m_state);
    graph.setContent(m_content);
    for (auto const& [group, children] : m_groups)
        if (SceneGraph::childrenOf(*group) != children)
            SceneGraph::setChildren(*group, children);
}

} // namespace hyxOSG
