// Taking part in the steps of a simulation.
#pragma once

#include "platform/hyx/objects/component.h"

namespace hyxSDK {

class Simulation;

/// Is called at fixed places of every step of the simulation it was added to.
class EventListener : public hyx::Component {
public:
    /// The places at which a listener is called.
    enum EventMask { PRE_COLLIDE_STEP = 1, PRE_STEP = 2, POST_STEP = 4, LAST_STEP = 8, ALL_STEPS = 15 };

    EventListener() = default;

    explicit EventListener(hyx::Name const& name) : Component(name) {}

    /// The places at which this listener is called: the sum of EventMask values, all at the start. Derived listeners
    /// give the bits their own meaning.
    virtual void setMask(int mask) { m_mask = mask; }

    int getMask() const { return m_mask; }

    /// Called when the listener has joined a simulation.
    virtual void addNotification();
    /// Called when the listener is about to leave its simulation.
    virtual void removeNotification();

    /// Before collision detection; `time` is the time at the start of the step, seconds.
    virtual void preCollide(hyx::TimeStamp time);
    /// After preCollide of all listeners, before the solver; forces put on bodies here act in this step.
    virtual void pre(hyx::TimeStamp time);
    /// When all bodies have moved; `time` is the time at the end of the step.
    virtual void post(hyx::TimeStamp time);
    /// After post of all listeners and processes: for those who only look.
    virtual void last(hyx::TimeStamp time);

    /// A disabled listener is not called. Enabled at the start.
    void setEnable(bool enable) { m_enabled = enable; }

    bool isEnabled() const { return m_enabled; }

    /// Null while in no simulation.
    Simulation* getSimulation() const { return m_simulation; }

protected:
    ~EventListener() override = default;

private:
    friend class Simulation;
    int m_mask = ALL_STEPS;
    bool m_enabled = true;
    Simulation* m_simulation = nullptr;
};

} // namespace hyxSDK
