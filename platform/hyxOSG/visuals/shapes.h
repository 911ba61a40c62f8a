// Simple figures that belong to no body.
#pragma once

#include "platform/hyx/values/affine_matrix4x4.h"
#include "platform/hyx/values/vec3.h"
#include "platform/hyx/values/vec3_vector.h"
#include "platform/hyx/values/vec4.h"
#include "platform/hyxRender/color.h"

namespace osg {
class Geode;
class MatrixTransform;
} // namespace osg

namespace hyxOSG {

// Shapes without a simulation object behind them. Nothing holds the result: put it into a scene to keep it. Colours are
// red, green, blue, alpha from 0 to 1; an alpha below 1 is see-through. Sizes that are not positive and finite raise
// std::invalid_argument.

/// A lit sphere. Metres.
osg::Geode* createSphere(hyx::Vec3 const& center, hyx::Vec4 const& color, float radius);

/// A lit cylinder around the local y axis, centred at the origin of `transform`. Metres.
osg::MatrixTransform* createCylinder(hyx::AffineMatrix4x4 const& transform, hyx::Vec4 const& color, float radius,
                                     float height);

/// An unlit line, `width` pixels wide.
osg::Geode* createLine(hyx::Vec3 const& start, hyx::Vec3 const& end, hyx::Vec4 const& color, float width);

/// An unlit line through all points, `width` pixels wide; fewer than two points draw nothing.
osg::Geode* createPolyline(hyx::Vec3Vector const& points, hyx::Vec4 const& color, float width);

/// The twelve edges of the axis-aligned box between two corners, `width` pixels wide.
osg::Geode* createCubeLines(hyx::Vec3 const& minCorner, hyx::Vec3 const& maxCorner,
                            hyxRender::Color const& color = hyxRender::Color(1, 1, 1, 1), double width = 1.0);

} // namespace hyxOSG
