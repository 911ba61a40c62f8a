/// Collects the lines of a simulation's debug drawing.
#pragma once

#include <LinearMath/btIDebugDraw.h>
#include <osg/Array>

namespace hyxSDK {
class Simulation;
}

namespace hyxOSG {

/// Fills two arrays with the end points and colours of lines; the arrays keep their memory from frame to frame.
class DebugLines : public btIDebugDraw {
public:
  DebugLines(osg::Vec3Array& points, osg::Vec4Array& colors) : m_points(points), m_colors(colors) {}

  /// Shapes and boxes of all geometries, contacts, attachment frames of constraints, and frames.
  void draw(hyxSDK::Simulation& simulation);

  void drawLine(const btVector3& from, const btVector3& to, const btVector3& color) override;
  void drawContactPoint(const btVector3& point, const btVector3& normal, btScalar distance, int, const btVector3& color) override;
  void reportErrorWarning(const char*) override {}
  void draw3dText(const btVector3&, const char*) override {}
  void setDebugMode(int mode) override { m_mode = mode; }
  int getDebugMode() const override { return m_mode; }

private:
  void drawShapes(const hyxSDK::Simulation& simulation);
  void drawContacts(const hyxSDK::Simulation& simulation);
  void drawConstraints(const hyxSDK::Simulation& simulation);

  osg::Vec3Array& m_points;
  osg::Vec4Array& m_colors;
  int m_mode = DBG_DrawWireframe;
};

}  // namespace hyxOSG
