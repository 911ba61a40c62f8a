// What stands behind the joints of a model as arrays.
#pragma once

#include "platform/hyxtavlang/joint_array.h"
#include "reference/hyxtavlang/joint_drives.h"

namespace hyxtavlang {

/// How a body hangs on another one, or on the world.
struct Link {
    hyx::ref_ptr<hyx::RigidBody> parent; ///< null is the world
    hyx::ref_ptr<hyx::RigidBody> child;
    int drive = -1;            ///< among the drives; -1 for a joint that neither turns nor slides about one axis
    hyx::AffineMatrix4x4 rest; ///< from the child to the parent at the start
    hyx::Vec3 anchor;          ///< in the parent at the start
    hyx::Vec3 axis;
};

struct JointArray::Implementation {
    /// In the order of the file.
    std::vector<std::string> names;
    hyx::ref_ptr<JointDrives> drives;
    /// From the roots to the tips.
    std::vector<Link> links;
};

} // namespace hyxtavlang
