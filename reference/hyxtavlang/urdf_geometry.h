// The shapes of a robot description.
#pragma once

#include "platform/hyx/values/affine_matrix4x4.h"
#include "platform/hyxCollide/geometry.h"
#include "platform/hyxtavlang/opt_params.h"

#include <osg/Node>
#include <urdf_model/link.h>

#include <string>

namespace hyxtavlang {

/// Where the files are that a description refers to.
struct UrdfFiles {
    std::string modelPath;
    std::vector<std::string> searchPaths;
};

hyx::AffineMatrix4x4 toMatrix(urdf::Pose const& pose);

/// The collision shape, at `place` in its body. Throws std::runtime_error for a mesh that is missing or cannot be read.
hyx::ref_ptr<hyxCollide::Geometry> makeCollision(urdf::Geometry const& geometry, hyx::AffineMatrix4x4 const& place,
                                                 UrdfFiles const& files);

/// The visual at `place` in its body, in its colour. Throws like `makeCollision`.
osg::ref_ptr<osg::Node> makeVisual(urdf::Visual const& visual, hyx::AffineMatrix4x4 const& place,
                                   UrdfFiles const& files);

} // namespace hyxtavlang
