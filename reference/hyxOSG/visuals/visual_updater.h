// Visuals that come and go with a simulation's bodies.
#pragma once

#include "platform/hyxSDK/event_listener.h"
#include "platform/hyxSDK/simulation.h"

#include <osg/Group>
#include <osg/observer_ptr>

#include <map>

namespace hyxOSG {

/// Gives bodies and free geometries visuals when they enter the simulation, and takes those of bodies away when they
/// leave. Once the group is gone it does nothing. It holds no reference on bodies.
class VisualUpdater : public hyxSDK::EventListener {
public:
    /// `source`, where given and in no simulation itself, is called in this one's steps.
    VisualUpdater(osg::Group* group, float detailRatio, bool evenIfSensor, hyxSDK::EventListener* source = nullptr);

    /// The visual of a body that is already there.
    void adopt(hyx::RigidBody* body);

    void addNotification() override;
    void removeNotification() override;
    void preCollide(hyx::TimeStamp time) override;
    void pre(hyx::TimeStamp time) override;
    void post(hyx::TimeStamp time) override;
    void last(hyx::TimeStamp time) override;

private:
    void geometryAdded(hyxCollide::Geometry* geometry);
    void bodyRemoved(hyx::RigidBody* body);
    hyxSDK::EventListener* source() const;

    osg::observer_ptr<osg::Group> m_group;
    float m_detailRatio;
    bool m_evenIfSensor;
    hyx::ref_ptr<hyxSDK::EventListener> m_source;
    std::map<hyx::RigidBody const*, osg::observer_ptr<osg::Group>> m_visuals;
    hyxSDK::Simulation::BodyEvent::CallbackType m_onBody, m_onBodyRemoved;
    hyxSDK::Simulation::GeometryEvent::CallbackType m_onGeometry;
};

} // namespace hyxOSG
