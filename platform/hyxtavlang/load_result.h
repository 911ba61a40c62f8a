// What loading a model gave.
#pragma once

#include "platform/hyx/bodies/frame.h"
#include "platform/hyx/objects/referenced.h"
#include "platform/hyxSDK/assembly.h"
#include "platform/hyxtavlang/joint_array.h"
#include "platform/hyxtavlang/model_node.h"

#include <map>
#include <string>
#include <vector>

namespace hyxtavlang {

/// The assembly that a model became, or the errors that kept it from being loaded; a value.
struct LoadResult {
    LoadResult() = default;

    /// Whether the model was loaded.
    bool isSuccess() const { return assembly != nullptr && errors.empty(); }

    /// The bodies and joints of the model, named as in its file; null when it was not loaded.
    hyxSDK::Assembly* getAssembly() const { return assembly.get(); }

    /// The name that the file gives the model.
    std::string getModelName() const { return modelName; }

    /// One line for each thing that was wrong; empty when the model was loaded.
    std::vector<std::string> getErrors() const { return errors; }

    /// The model as it stands in the file; holds nothing when it was not read.
    ModelNode getModel() const { return model; }

    /// The joints of the model that turn or slide; null when it was not loaded.
    JointArray* getJoints() const { return joints.get(); }

    /// Where the camera or other sensor of this name in the tree is, following its body; null when there is none.
    hyx::Frame* getSensorFrame(std::string const& name) const {
        auto const found = sensorFrames.find(name);
        return found == sensorFrames.end() ? nullptr : found->second.get();
    }

    /// The body that carries it; null for one in the world.
    hyx::RigidBody* getSensorBody(std::string const& name) const {
        auto const found = sensorBodies.find(name);
        return found == sensorBodies.end() ? nullptr : found->second.get();
    }

    hyx::ref_ptr<hyxSDK::Assembly> assembly;                      ///< null when the model was not loaded
    std::string modelName;                                        ///< as in the file
    std::vector<std::string> errors;                              ///< one line each
    ModelNode model;                                              ///< holds nothing when the file was not read
    hyx::ref_ptr<JointArray> joints;                              ///< null when the model was not loaded
    std::map<std::string, hyx::ref_ptr<hyx::Frame>> sensorFrames; ///< by name
    std::map<std::string, hyx::ref_ptr<hyx::RigidBody>> sensorBodies;
};

} // namespace hyxtavlang
