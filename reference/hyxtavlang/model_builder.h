// Models in files as bodies, joints and visuals.
#pragma once

#include "platform/hyx/bodies/contact_material.h"
#include "platform/hyxtavlang/load_result.h"
#include "platform/hyxtavlang/model_looks.h"
#include "platform/hyxtavlang/opt_params.h"
#include "reference/hyxOSG/visuals/geometry_visual.h"
#include "reference/hyxtavlang/model_lights.h"
#include "reference/hyxtavlang/model_reader.h"

#include <osg/Group>

#include <optional>
#include <string>
#include <vector>

namespace hyxtavlang {

/// What to take from a model, a mask.
enum ModelParts : hyx::UInt { BODIES = 1, CONSTRAINTS = 2, MATERIALS = 4, ALL_PARTS = 7 };

/// What a model tree became, ready to be put into a simulation.
struct BuiltModel {
    /// A mesh, or other shape, that is drawn at a place of a body.
    struct Visual {
        hyx::ref_ptr<hyx::RigidBody> body;
        hyx::ref_ptr<hyxCollide::Geometry> geometry;      ///< whose look this is; null for what only is seen
        osg::ref_ptr<osg::Node> node;                     ///< in the geometry's or the body's frame; null: the shape
        std::shared_ptr<tavlang::Visuals::Material> look; ///< null: its own
    };

    LoadResult result;
    std::vector<Visual> visuals;
    std::vector<hyx::ref_ptr<hyx::Material>> materials; ///< that the file names for themselves
    std::vector<hyx::ref_ptr<hyx::ContactMaterial>> contactMaterials;
    std::vector<BuiltLight> lights;
    std::optional<hyx::Vec3> gravity; ///< what the file gives

    /// Puts what `selection` (a mask of ModelParts) chooses of the model into `parent`, or where that is null straight
    /// into the simulation, and gives this the materials and the gravity.
    void enter(hyxSDK::Simulation& simulation, hyxSDK::Assembly* parent, hyx::UInt selection = ALL_PARTS) const;

    /// Puts the visuals under `root`, each following its body; with `frames` the axes of each body too.
    void createVisuals(osg::Group& root, bool frames, hyxOSG::ShapeLook const& shapes = {1, false}) const;
};

/// What cannot be built, and the line where that begins in the file; 0 where it is not known.
struct PartError : std::runtime_error {
    PartError(std::string const& text, int number) : std::runtime_error(text), line(number) {}

    int line;
};

/// Builds a tree's bodies, joints, drives and visuals. Throws PartError.
void buildModel(ModelTree const& tree, OptParams const& params, BuiltModel& model);

/// Reads the model at `path` and builds it. `modelName`, when not empty, must be its name. What is wrong is listed in
/// the result, which then has no assembly.
BuiltModel loadModel(std::string const& path, std::string const& modelName, OptParams const& params);

} // namespace hyxtavlang
