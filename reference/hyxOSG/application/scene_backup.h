// What a scene consists of, kept while another takes its place.
#pragma once

#include "platform/hyxSDK/simulation.h"
#include "reference/hyxOSG/application/scene_graph.h"

#include <string>
#include <utility>
#include <vector>

namespace hyxOSG {

/// All that is in a simulation and in the groups of a scene, with the state of it, so that it can come back when the
/// next scene cannot be built.
class SceneBackup {
public:
    SceneBackup(hyxSDK::Simulation& simulation, SceneGraph const& graph);

    /// Puts everything back into the same simulation and groups, which are to be empty.
    void restore(hyxSDK::Simulation& simulation, SceneGraph& graph) const;

private:
    hyx::RigidBodyPtrVector m_bodies;
    hyxCollide::GeometryPtrVector m_geometries; ///< of no body
    hyx::ConstraintPtrVector m_constraints;
    hyxSDK::ProcessPtrVector m_processes;
    hyxSDK::FramePtrVector m_frames;
    hyxSDK::AssemblyPtrVector m_assemblies;
    hyx::Vector<hyx::ref_ptr<hyx::Material>> m_materials;
    hyx::Vector<hyx::ref_ptr<hyx::ContactMaterial>> m_contactMaterials;
    std::vector<std::pair<hyx::ref_ptr<hyxSDK::EventListener>, int>> m_listeners; ///< with their priorities
    std::string m_state;
    SceneGraph::Content m_content;
    /// The groups below, with their children: visuals leave them when their bodies do.
    std::vector<std::pair<osg::ref_ptr<osg::Group>, SceneGraph::Nodes>> m_groups;
};

} // namespace hyxOSG
