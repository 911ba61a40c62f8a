// Puts what a model or scene file holds into the simulation and the scene.
#include "platform/hyxOSG/visuals/read_file.h"

#include "platform/hyxSDK/simulation.h"
#include "reference/hyxtavlang/model_builder.h"
#include "reference/machinery/files/missing_file.h"
#include "reference/machinery/meshes/notices.h"

#include <osg/Group>
#include <osgDB/FileUtils>

namespace hyxOSG {

bool readFile(std::string const& file, hyxSDK::Simulation* simulation, osg::Group* root, hyxSDK::Assembly* parent,
              double detailRatio, bool evenIfSensor, hyx::UInt selection, RigidBodyRenderCache* cache) {
    ShapeLook const look(static_cast<float>(detailRatio), evenIfSensor, cache); // refuses before anything is read
    std::string const path = osgDB::findDataFile(file);
    if (!simulation || osgDB::fileType(path) != osgDB::REGULAR_FILE) {
        warn(simulation ? missingFile("scene file", file) : "a scene file needs a simulation to be read into");
        return false;
    }
    hyxtavlang::BuiltModel const model = hyxtavlang::loadModel(path, "", hyxtavlang::OptParams());
    for (std::string const& error : model.result.getErrors())
        warn(error);
    if (!model.result.isSuccess())
        return false;
    model.enter(*simulation, parent, selection);
    if (root && selection & hyxtavlang::BODIES)
        model.createVisuals(*root, false, look);
    return true;
}

} // namespace hyxOSG
