// Shapes of a model tree as collision shapes and as what is seen.
#pragma once

#include "platform/hyxCollide/shape.h"
#include "platform/hyxtavlang/model_looks.h"

#include <osg/Node>

namespace hyxtavlang {

/// The shape, and the turn that leads from its own axes to those of the tree's shape. Throws ModelError for a mesh that
/// cannot be read, std::invalid_argument for sizes that no shape has.
struct BuiltShape {
    hyx::ref_ptr<hyxCollide::Shape> shape;
    hyx::AffineMatrix4x4 turn;
};

BuiltShape makeShape(tavlang::Physics3D::Geometry const& geometry);

/// The visual at its place in its body, in its colour. Throws ModelError for a mesh that cannot be read.
osg::ref_ptr<osg::Node> makeVisual(tavlang::Visuals::Visual const& visual);

} // namespace hyxtavlang
