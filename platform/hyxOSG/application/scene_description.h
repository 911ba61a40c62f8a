// One scene that an application can build.
#pragma once

#include <string>

namespace osg {
class Group;
} // namespace osg

namespace hyxSDK {
class Simulation;
} // namespace hyxSDK

namespace hyxOSG {

class ExampleApplication;

/// Builds a scene: fills the simulation and returns the group with its visuals, or null for none.
using BuildScenePtr = osg::Group* (*)(hyxSDK::Simulation*, hyxOSG::ExampleApplication*);

/// What an application needs to know of a scene: who builds it, and how a test run treats it.
///
/// A scene is a native function, a function of a script file, or a file alone: then a script's function
/// `buildScene`, a saved simulation, a robot or a model file.
struct SceneDescription {
    /// A description of no scene: not valid.
    SceneDescription() = default;

    /// A scene built by a native function. Not valid when `scene` is null.
    explicit SceneDescription(BuildScenePtr scene, bool unittest = true, float stopAfter = -1.0f,
                              bool slowUnittest = false);

    /// A scene built by the function `scriptFunction` of the script `fileName`. Not valid when either is empty.
    SceneDescription(std::string const& fileName, std::string const& scriptFunction, bool unittest = true,
                     float stopAfter = -1.0f, bool slowUnittest = false);

    /// A scene that a file holds. Not valid when `fileName` is empty.
    explicit SceneDescription(std::string const& fileName, bool unittest = true, float stopAfter = -1.0f,
                              bool slowUnittest = false);

    /// Whether `valid` is set and there is a function or a file to build the scene from.
    bool isValid() const;

    BuildScenePtr scene = nullptr; ///< the native function, or null
    bool unittest = true;          ///< whether a test run (`--test-scenes`) includes the scene
    float stopAfter = -1.0f;       ///< simulated seconds after which the loop ends; negative for never
    bool slowUnittest = false;     ///< whether it does so only with `--slow-scenes`
    bool valid = false;            ///< false keeps the application from building it
    std::string scriptFunction;    ///< name of the script's function, or empty
    std::string fileName;          ///< path of the script or other file, or empty
};

} // namespace hyxOSG
