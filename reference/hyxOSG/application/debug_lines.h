// Collects the lines of a simulation's debug drawing.
#pragma once

#include <LinearMath/btIDebugDraw.h>
#include <osg/Array>

namespace hyxSDK {
class Simulation;
} // namespace hyxSDK

namespace hyxOSG {

/// Fills two arrays with the end points and colours of lines; the arrays keep their memory from frame to frame.
class DebugLines : public btIDebugDraw {
public:
    DebugLines(osg::Vec3Array& points, osg::Vec4Array& colors) : m_points(points), m_colors(colors) {}

    /// Shapes of all geometries.
    void drawShapes(hyxSDK::Simulation const& simulation);
    /// What lies inside bodies: contacts, attachment frames of constraints, frames, and the forces of contacts and
    /// constraints on their second bodies. The force that carries a body of average weight is as long as an average
    /// body's radius.
    void drawInside(hyxSDK::Simulation& simulation);

    void drawLine(btVector3 const& from, btVector3 const& to, btVector3 const& color) override;
    void drawContactPoint(btVector3 const& point, btVector3 const& normal, btScalar distance, int,
                          btVector3 const& color) override;

    void reportErrorWarning(char const*) override {}

    void draw3dText(btVector3 const&, char const*) override {}

    void setDebugMode(int mode) override { m_mode = mode; }

    int getDebugMode() const override { return m_mode; }

private:
    void drawForces(hyxSDK::Simulation const& simulation);
    void drawContacts(hyxSDK::Simulation const& simulation);
    void drawConstraints(hyxSDK::Simulation const& simulation);

    osg::Vec3Array& m_points;
    osg::Vec4Array& m_colors;
    int m_mode = DBG_DrawWireframe;
};

} // namespace hyxOSG
