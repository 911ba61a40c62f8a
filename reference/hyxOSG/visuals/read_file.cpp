// Tells by a file's kind what it holds, and puts that into the simulation and the scene.
#include "platform/hyxOSG/visuals/read_file.h"

#include "platform/hyxOSG/nodes/geometry_node.h"
#include "platform/hyxOSG/visuals/finders.h"
#include "platform/hyxOSG/visuals/materials.h"
#include "platform/hyxSDK/simulation.h"
#include "reference/hyxOSG/visuals/body_visual.h"
#include "reference/hyxOSG/visuals/scene_json.h"
#include "reference/hyxtavlang/model_builder.h"
#include "reference/machinery/meshes/notices.h"
#include "reference/machinery/meshes/shape_meshes.h"

#include <osg/Group>
#include <osgDB/FileNameUtils>
#include <osgDB/FileUtils>

#include <fstream>
#include <iterator>

namespace hyxOSG {
namespace {

/// Where what was read goes, and how it looks.
struct Target {
    hyxSDK::Simulation& simulation;
    osg::Group* root;
    hyxSDK::Assembly* parent;
    float detailRatio;
    bool evenIfSensor;
    hyx::UInt selection;
    RigidBodyRenderCache* cache;

    template <class Object>
    void add(Object* object) const {
        if (parent)
            parent->add(object);
        else
            simulation.add(object);
    }
};

void addScene(SceneContent const& content, Target const& target) {
    if (content.hasGravity)
        target.simulation.setGravity(content.gravity);
    if (target.selection & SCENE_MATERIALS)
        for (auto const& material : content.materials)
            target.simulation.add(material.get());
    if (target.selection & SCENE_BODIES)
        for (auto const& body : content.bodies) {
            target.add(body.get());
            if (target.root)
                createBodyVisual(*body, *target.root, target.detailRatio, target.evenIfSensor, target.cache);
        }
    if (target.selection & SCENE_CONSTRAINTS)
        for (auto const& constraint : content.constraints)
            target.add(constraint.get());
    for (auto const& [geometry, color] : content.colors)
        setDiffuseColor(findGeometryNode(geometry, target.root), color);
}

bool readScene(std::string const& path, Target const& target) {
    std::ifstream stream(path, std::ios::binary);
    std::string const text{std::istreambuf_iterator<char>(stream), {}};
    addScene(readSceneJson(text, osgDB::getFilePath(path)), target);
    return true;
}

bool readModelFile(std::string const& path, Target const& target) {
    hyxtavlang::BuiltModel const model = hyxtavlang::loadModel(path, "", hyxtavlang::OptParams());
    for (std::string const& error : model.result.getErrors())
        warn(error);
    if (!model.result.isSuccess())
        return false;
    model.enter(target.simulation, target.parent);
    if (target.root)
        model.createVisuals(*target.root, false);
    return true;
}

} // namespace

bool readFile(std::string const& file, hyxSDK::Simulation* simulation, osg::Group* root, hyxSDK::Assembly* parent,
              double detailRatio, bool evenIfSensor, hyx::UInt selection, RigidBodyRenderCache* cache) {
    segmentsForDetail(static_cast<float>(detailRatio)); // refuses a bad ratio before anything is read
    std::string const path = osgDB::findDataFile(file);
    if (!simulation || osgDB::fileType(path) != osgDB::REGULAR_FILE) {
        warn(simulation ? "there is no scene file \"" + file + "\""
                        : "a scene file needs a simulation to be read into");
        return false;
    }
    Target const target{*simulation, root, parent, static_cast<float>(detailRatio), evenIfSensor, selection, cache};
    std::string const kind = osgDB::getLowerCaseFileExtension(path);
    try {
        if (kind == "json")
            return readScene(path, target);
        if (hyxtavlang::isModelFile(path))
            return readModelFile(path, target);
        warn("the scene file \"" + file +
             "\" is of an unknown kind; accepted are .json scenes and .urdf, .sdf, .xml and .mjcf"
             " models");
    } catch (std::exception const& error) {
        warn("the scene file \"" + file + "\" cannot be read: " + error.what());
    }
    return false;
}

} // namespace hyxOSG
