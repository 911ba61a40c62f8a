// Gives visuals to what is added to a simulation, and takes them from what leaves.
#include "reference/hyxOSG/visuals/visual_updater.h"

#include "platform/hyxOSG/nodes/geometry_node.h"
#include "platform/hyxOSG/visuals/create_visual.h"
#include "platform/hyxOSG/visuals/finders.h"

#include <stdexcept>

namespace hyxOSG {

VisualUpdater::VisualUpdater(osg::Group* group, float detailRatio, bool evenIfSensor, hyxSDK::EventListener* source)
    : m_group(group),
      m_detailRatio(detailRatio),
      m_evenIfSensor(evenIfSensor),
      m_source(source),
      m_onBody([this](hyx::RigidBody* body) { adopt(body); }),
      m_onBodyRemoved([this](hyx::RigidBody* body) { bodyRemoved(body); }),
      m_onGeometry([this](hyxCollide::Geometry* geometry) { geometryAdded(geometry); }) {}

void VisualUpdater::adopt(hyx::RigidBody* body) {
    osg::ref_ptr<osg::Group> group;
    if (m_group.lock(group))
        m_visuals[body] = createVisual(body, group, m_detailRatio, m_evenIfSensor);
}

void VisualUpdater::geometryAdded(hyxCollide::Geometry* geometry) {
    osg::ref_ptr<osg::Group> group;
    if (!m_group.lock(group) || findGeometryNode(geometry, group))
        return;
    if (!geometry->getRigidBody()) {
        createVisual(geometry, group, m_detailRatio, m_evenIfSensor);
        return;
    }
    // One that came with its body waits for the body's own turn; one that joined a body later is added to its visual.
    auto const visual = m_visuals.find(geometry->getRigidBody());
    osg::ref_ptr<osg::Group> bodyGroup;
    if (visual != m_visuals.end() && visual->second.lock(bodyGroup))
        createVisual(geometry, bodyGroup, m_detailRatio, m_evenIfSensor);
}

void VisualUpdater::bodyRemoved(hyx::RigidBody* body) {
    auto const visual = m_visuals.find(body);
    if (visual == m_visuals.end())
        return;
    osg::ref_ptr<osg::Group> group;
    if (visual->second.lock(group))
        while (group->getNumParents() > 0)
            group->getParent(0)->removeChild(group);
    m_visuals.erase(visual);
}

void VisualUpdater::addNotification() {
    if (!getSimulation())
        throw std::logic_error("the updater is in no simulation: add it to one");
    getSimulation()->getBodyAddedEvent().add(m_onBody);
    getSimulation()->getBodyRemovedEvent().add(m_onBodyRemoved);
    getSimulation()->getGeometryAddedEvent().add(m_onGeometry);
}

void VisualUpdater::removeNotification() {
    if (!getSimulation())
        throw std::logic_error("the updater is in no simulation: add it to one");
    getSimulation()->getBodyAddedEvent().remove(m_onBody);
    getSimulation()->getBodyRemovedEvent().remove(m_onBodyRemoved);
    getSimulation()->getGeometryAddedEvent().remove(m_onGeometry);
}

hyxSDK::EventListener* VisualUpdater::source() const {
    bool const calledBySimulation = !m_source || m_source->getSimulation();
    return calledBySimulation || !m_source->isEnabled() ? nullptr : m_source.get();
}

void VisualUpdater::preCollide(hyx::TimeStamp time) {
    if (auto* const listener = source())
        listener->preCollide(time);
}

void VisualUpdater::pre(hyx::TimeStamp time) {
    if (auto* const listener = source())
        listener->pre(time);
}

void VisualUpdater::post(hyx::TimeStamp time) {
    if (auto* const listener = source())
        listener->post(time);
}

void VisualUpdater::last(hyx::TimeStamp time) {
    if (auto* const listener = source())
        listener->last(time);
}

} // namespace hyxOSG
