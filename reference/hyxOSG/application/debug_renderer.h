// Lines and names of what a simulation computes with.
#pragma once

#include <osg/Group>

#include <memory>

namespace hyxSDK {
class Simulation;
} // namespace hyxSDK

namespace hyxOSG {

/// Draws shapes, boxes, contacts, constraints and frames of a simulation as lines, and names as text.
///
/// The lines are one geometry whose arrays are filled anew at each update; nothing is made while it is off.
class DebugRenderer {
public:
    explicit DebugRenderer(osg::Group* root);
    ~DebugRenderer();

    void setEnable(bool enable);

    bool enabled() const { return m_enabled; }

    void setText(bool enable) { m_text = enable; }

    bool text() const { return m_text; }

    /// Takes the simulation's present state over.
    void update(hyxSDK::Simulation& simulation);

private:
    struct Drawing;

    osg::ref_ptr<osg::Group> m_root;
    std::unique_ptr<Drawing> m_drawing; ///< null while off
    bool m_enabled = false;
    bool m_text = false;
};

} // namespace hyxOSG
