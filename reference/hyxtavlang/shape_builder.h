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

/// What is seen of a shape that is drawn from more than its collision shape, in its own frame: a mesh with its own
/// look, an ellipsoid, a plane with ends. Null for the others. `plain`: a mesh leaves its colours and pictures behind.
/// Throws ModelError for a mesh that cannot be read.
osg::ref_ptr<osg::Node> makeOwnNode(tavlang::Physics3D::Geometry const& geometry, bool plain);

/// Gives the node a colour, and a picture where there is one.
void paint(osg::Node& node, tavlang::Visuals::Material const& look);

/// The visual at its place in its body, in its colour. Throws ModelError for a mesh that cannot be read.
osg::ref_ptr<osg::Node> makeVisual(tavlang::Visuals::Visual const& visual);

} // namespace hyxtavlang
