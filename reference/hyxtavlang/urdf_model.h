// Robot descriptions as bodies, joints and visuals.
#pragma once

#include "platform/hyxtavlang/load_result.h"
#include "platform/hyxtavlang/opt_params.h"

#include <osg/Group>

#include <string>
#include <vector>

namespace hyxtavlang {

/// What a robot description holds, ready to be put into a simulation.
struct UrdfModel {
    /// A mesh, or other shape, that is drawn at a place of a body.
    struct Visual {
        hyx::ref_ptr<hyx::RigidBody> body;
        osg::ref_ptr<osg::Node> node; ///< in the body's frame
    };

    LoadResult result;
    std::vector<Visual> visuals;

    /// Puts the visuals under `root`, each following its body; with `frames` the axes of each body too.
    void createVisuals(osg::Group& root, bool frames) const;
};

/// Reads the robot description at `path`. `modelName`, when not empty, must be the name of its robot. What is wrong is
/// listed in the result, which then has no assembly.
UrdfModel readUrdf(std::string const& path, std::string const& modelName, OptParams const& params);

} // namespace hyxtavlang
